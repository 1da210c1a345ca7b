#pragma once
// Raw SQLite helpers for the schema and data-set tests: they look at the file as SQLite sees it,
// independent of the program's own data layer.
#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <functional>
#include <sqlite3.h>

class RawDb {
public:
    explicit RawDb(const QString& path)
    {
        if (sqlite3_open_v2(path.toUtf8().constData(), &m_db, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK) {
            sqlite3_close(m_db);
            m_db = nullptr;
            return;
        }
        // The tests' files are thrown away: no need to wait for the disk.
        sqlite3_exec(m_db, "PRAGMA synchronous=OFF", nullptr, nullptr, nullptr);
    }
    ~RawDb() { sqlite3_close(m_db); }
    RawDb(const RawDb&) = delete;
    RawDb& operator=(const RawDb&) = delete;
    bool isOpen() const { return m_db != nullptr; }
    sqlite3* handle() const { return m_db; }

    // Runs one statement with bound values; returns the rows (each a list of values).
    QList<QVariantList> rows(const QString& sql, const QVariantList& args = {})
    {
        QList<QVariantList> out;
        sqlite3_stmt* s = nullptr;
        m_rc = sqlite3_prepare_v2(m_db, sql.toUtf8().constData(), -1, &s, nullptr);
        if (m_rc != SQLITE_OK) {
            m_error = QString::fromUtf8(sqlite3_errmsg(m_db));
            m_extended = sqlite3_extended_errcode(m_db);
            return out;
        }
        for (int i = 0; i < args.size(); ++i) {
            const QVariant& v = args.at(i);
            if (v.isNull()) sqlite3_bind_null(s, i + 1);
            else if (v.typeId() == QMetaType::Int || v.typeId() == QMetaType::LongLong || v.typeId() == QMetaType::Bool)
                sqlite3_bind_int64(s, i + 1, v.toLongLong());
            else if (v.typeId() == QMetaType::Double) sqlite3_bind_double(s, i + 1, v.toDouble());
            else {
                const QByteArray t = v.toString().toUtf8();
                sqlite3_bind_text(s, i + 1, t.constData(), int(t.size()), SQLITE_TRANSIENT);
            }
        }
        while ((m_rc = sqlite3_step(s)) == SQLITE_ROW) {
            QVariantList row;
            for (int c = 0; c < sqlite3_column_count(s); ++c) {
                switch (sqlite3_column_type(s, c)) {
                case SQLITE_NULL: row << QVariant(); break;
                case SQLITE_INTEGER: row << QVariant(qint64(sqlite3_column_int64(s, c))); break;
                case SQLITE_FLOAT: row << QVariant(sqlite3_column_double(s, c)); break;
                default: row << QVariant(QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(s, c))));
                }
            }
            out << row;
        }
        m_extended = sqlite3_extended_errcode(m_db);
        m_error = m_rc == SQLITE_DONE ? QString() : QString::fromUtf8(sqlite3_errmsg(m_db));
        sqlite3_finalize(s);
        return out;
    }
    bool exec(const QString& sql, const QVariantList& args = {})
    {
        rows(sql, args);
        return m_rc == SQLITE_DONE;
    }
    QVariant scalar(const QString& sql, const QVariantList& args = {})
    {
        const auto r = rows(sql, args);
        return r.isEmpty() || r.first().isEmpty() ? QVariant() : r.first().first();
    }
    qint64 count(const QString& table) { return scalar(QStringLiteral("SELECT count(*) FROM \"%1\"").arg(table)).toLongLong(); }
    QStringList column(const QString& sql, const QVariantList& args = {})
    {
        QStringList out;
        for (const QVariantList& r : rows(sql, args)) out << (r.first().isNull() ? QString() : r.first().toString());
        return out;
    }

    QString error() const { return m_error; }
    int extendedCode() const { return m_extended; }

private:
    sqlite3* m_db = nullptr;
    int m_rc = SQLITE_OK;
    int m_extended = SQLITE_OK;
    QString m_error;
};

// Walks the build tree of a record the way the build view expands it (upgrade sources, components,
// items and raw materials of an equipment; raw materials, equipment, upgrade sources and items of a
// component; sources and items of a raw material). Counts the nodes; stops with cycle = true when a
// record turns up again below itself.
struct TreeWalk {
    qint64 nodes = 0;
    bool cycle = false;
    QString cyclePath;
};

inline TreeWalk walkBuildTree(RawDb& db, const QString& kind, const QString& name)
{
    TreeWalk result;
    QStringList path;
    std::function<void(const QString&, const QString&)> visit = [&](const QString& k, const QString& n) {
        if (result.cycle) return;
        const QString id = k + QLatin1Char(':') + n.toLower();
        if (path.contains(id)) {
            result.cycle = true;
            result.cyclePath = (path << id).join(QStringLiteral(" > "));
            return;
        }
        ++result.nodes;
        if (k == QLatin1String("I")) return;
        path << id;
        QList<QPair<QString, QString>> children;
        auto add = [&](const QString& childKind, const QString& sql) {
            for (const QString& c : db.column(sql, {n})) children << qMakePair(childKind, c);
        };
        if (k == QLatin1String("E")) {
            add("E", "SELECT U.UPGRADE_FROM FROM EQUIPMENTS_UPGRADE_FROM U, EQUIPMENTS E WHERE U.EQUIPMENT_NAME = ? AND E.EQUIPMENT_NAME = U.UPGRADE_FROM");
            add("C", "SELECT L.COMPONENTS_COMPONENT FROM EQUIPMENTS_COMPONENTS L, COMPONENTS C WHERE L.EQUIPMENTS_EQUIPMENT = ? AND L.COMPONENTS_COMPONENT = C.COMPONENT_NAME");
            add("I", "SELECT L.ITEM_NAME FROM EQUIPMENTS_ITEMS L, ITEMS I WHERE L.EQUIPMENTS_EQUIPMENT = ? AND L.ITEM_NAME = I.ITEM_NAME");
            add("R", "SELECT L.RAW_MATERIAL_NAME FROM EQUIPMENTS_RAW_MATERIALS L, RAW_MATERIALS R WHERE L.EQUIPMENTS_EQUIPMENT = ? AND L.RAW_MATERIAL_NAME = R.RAW_MATERIAL_NAME");
        } else if (k == QLatin1String("C")) {
            add("R", "SELECT L.RAW_MATERIAL FROM COMPONENTS_RAW_MATERIALS L, RAW_MATERIALS R WHERE L.COMPONENTS_COMPONENT = ? AND R.RAW_MATERIAL_NAME = L.RAW_MATERIAL");
            add("E", "SELECT L.EQUIPMENT_NAME FROM COMPONENTS_EQUIPMENTS L, EQUIPMENTS E WHERE L.COMPONENT_NAME = ? AND E.EQUIPMENT_NAME = L.EQUIPMENT_NAME");
            add("C", "SELECT L.UPGRADE_FROM FROM COMPONENTS_UPGRADE_FROM L, COMPONENTS C WHERE L.COMPONENT_NAME = ? AND C.COMPONENT_NAME = L.COMPONENT_NAME");
            add("I", "SELECT L.ITEM_NAME FROM COMPONENTS_ITEMS L, ITEMS I WHERE L.COMPONENT_NAME = ? AND L.ITEM_NAME = I.ITEM_NAME");
        } else if (k == QLatin1String("R")) {
            add("R", "SELECT REFINES_FROM FROM RAW_MATERIALS_REFINES_FROM WHERE RAW_MATERIAL_NAME = ?");
            add("I", "SELECT ITEM_NAME FROM RAW_MATERIALS_ITEMS WHERE RAW_MATERIAL_NAME = ?");
        }
        for (const auto& c : children) visit(c.first, c.second);
        path.removeLast();
    };
    visit(kind, name);
    return result;
}
