#pragma once
// Raw SQLite helpers for the schema and data-set tests: they look at the file as SQLite sees it,
// independent of the program's own data layer.
#include "data/sqlfunctions.h"

#include <QString>
#include <QStringList>
#include <QVariant>
#include <functional>
#include <sqlite3.h>

class RawDb {
public:
    // withFunctions false: a connection as the plain sqlite3 shell has it, without the program's
    // collation and functions.
    explicit RawDb(const QString& path, bool withFunctions = true) {
        if (sqlite3_open_v2(path.toUtf8().constData(), &m_db, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK) {
            sqlite3_close(m_db);
            m_db = nullptr;
        } else if (withFunctions) {
            RegisterSqlFunctions(m_db);
        }
    }
    ~RawDb() { sqlite3_close(m_db); }
    bool isOpen() const { return m_db != nullptr; }

    // Runs one statement with bound values; returns its rows.
    QList<QVariantList> rows(const QString& sql, const QVariantList& args = {}) {
        QList<QVariantList> out;
        sqlite3_stmt* s = nullptr;
        if ((m_rc = sqlite3_prepare_v2(m_db, sql.toUtf8().constData(), -1, &s, nullptr)) == SQLITE_OK) {
            for (int i = 0; i < args.size(); ++i) {
                const QVariant& v = args.at(i);
                if (v.typeId() == QMetaType::Int || v.typeId() == QMetaType::LongLong)
                    sqlite3_bind_int64(s, i + 1, v.toLongLong());
                else
                    sqlite3_bind_text(s, i + 1, v.toString().toUtf8().constData(), -1, SQLITE_TRANSIENT);
            }
            while ((m_rc = sqlite3_step(s)) == SQLITE_ROW) {
                QVariantList row;
                for (int c = 0; c < sqlite3_column_count(s); ++c) {
                    const int type = sqlite3_column_type(s, c);
                    row << (type == SQLITE_NULL      ? QVariant()
                            : type == SQLITE_INTEGER ? QVariant(qint64(sqlite3_column_int64(s, c)))
                            : type == SQLITE_FLOAT
                                ? QVariant(sqlite3_column_double(s, c))
                                : QVariant(QString::fromUtf8((const char*)sqlite3_column_text(s, c))));
                }
                out << row;
            }
        }
        m_extended = sqlite3_extended_errcode(m_db);
        m_error = m_rc == SQLITE_DONE ? QString() : QString::fromUtf8(sqlite3_errmsg(m_db));
        sqlite3_finalize(s);
        return out;
    }
    bool exec(const QString& sql, const QVariantList& args = {}) {
        return rows(sql, args), m_rc == SQLITE_DONE;
    }
    QVariant scalar(const QString& sql, const QVariantList& args = {}) {
        return rows(sql, args).value(0).value(0);
    }
    qint64 count(const QString& table) {
        return scalar("SELECT count(*) FROM \"" + table + "\"").toLongLong();
    }
    QStringList column(const QString& sql, const QVariantList& args = {}) {
        QStringList out;
        for (const QVariantList& r : rows(sql, args))
            out << r.first().toString();
        return out;
    }
    QString error() const { return m_error; }
    int extendedCode() const { return m_extended; }

private:
    sqlite3* m_db = nullptr;
    int m_rc = SQLITE_OK, m_extended = SQLITE_OK;
    QString m_error;
};

// Walks the build tree of a record the way the build view expands it (E equipment, C component,
// R raw material, I item). Counts the nodes; stops with cycle set when a record turns up below itself.
struct TreeWalk {
    qint64 nodes = 0;
    bool cycle = false;
    QString cyclePath;
};

inline TreeWalk walkBuildTree(RawDb& db, const QString& kind, const QString& name) {
    static const QList<QStringList> links = {
        // kind, child kind, table, parent column, child column
        {"E", "E", "EQUIPMENTS_UPGRADE_FROM", "EQUIPMENT_NAME", "UPGRADE_FROM"},
        {"E", "C", "EQUIPMENTS_COMPONENTS", "EQUIPMENTS_EQUIPMENT", "COMPONENTS_COMPONENT"},
        {"E", "I", "EQUIPMENTS_ITEMS", "EQUIPMENTS_EQUIPMENT", "ITEM_NAME"},
        {"E", "R", "EQUIPMENTS_RAW_MATERIALS", "EQUIPMENTS_EQUIPMENT", "RAW_MATERIAL_NAME"},
        {"C", "R", "COMPONENTS_RAW_MATERIALS", "COMPONENTS_COMPONENT", "RAW_MATERIAL"},
        {"C", "E", "COMPONENTS_EQUIPMENTS", "COMPONENT_NAME", "EQUIPMENT_NAME"},
        {"C", "C", "COMPONENTS_UPGRADE_FROM", "COMPONENT_NAME", "UPGRADE_FROM"},
        {"C", "I", "COMPONENTS_ITEMS", "COMPONENT_NAME", "ITEM_NAME"},
        {"R", "R", "RAW_MATERIALS_REFINES_FROM", "RAW_MATERIAL_NAME", "REFINES_FROM"},
        {"R", "I", "RAW_MATERIALS_ITEMS", "RAW_MATERIAL_NAME", "ITEM_NAME"}};
    TreeWalk result;
    QStringList path;
    std::function<void(const QString&, const QString&)> visit = [&](const QString& k, const QString& n) {
        const QString id = k + ':' + n.toLower();
        if (result.cycle || path.contains(id)) {
            if (!result.cycle)
                result.cyclePath = (path << id).join(" > ");
            result.cycle = true;
            return;
        }
        ++result.nodes;
        path << id;
        for (const QStringList& l : links)
            if (l[0] == k)
                for (const QString& c :
                     db.column(QString("SELECT %1 FROM %2 WHERE %3 = ?").arg(l[4], l[2], l[3]), {n}))
                    visit(l[1], c);
        path.removeLast();
    };
    visit(kind, name);
    return result;
}
