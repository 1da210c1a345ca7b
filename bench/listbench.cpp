#include "listbench.h"
#include "benchutil.h"

#include "data/database.h"
#include "data/recordset.h"
#include "data/sqltranslate.h"
#include "data/synthetic.h"
#include "lists/listmodel.h"
#include "views/equiptypes.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QHeaderView>

#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace bench {

QString treeRoot() {
    return QStringLiteral("Bench Tree Engine");
}

namespace {
// A file made by an earlier build compares names by other rules, or names its equipment in ASCII
// only: it is made again.
bool hasCurrentSchema(const QString& file) {
    sqlite3* h = nullptr;
    sqlite3_stmt* st = nullptr;
    bool current = false;
    if (sqlite3_open_v2(QFile::encodeName(file).constData(), &h, SQLITE_OPEN_READONLY, nullptr) ==
            SQLITE_OK &&
        sqlite3_prepare_v2(
            h,
            "SELECT (SELECT COUNT(*) FROM sqlite_master WHERE sql LIKE '%COLLATE VOSK_NOCASE%'), "
            "(SELECT COUNT(*) FROM EQUIPMENTS WHERE rowid = 2 AND EQUIPMENT_NAME LIKE '\xC3\x89lan %')",
            -1, &st, nullptr) == SQLITE_OK &&
        sqlite3_step(st) == SQLITE_ROW)
        current = sqlite3_column_int(st, 0) > 0 && sqlite3_column_int(st, 1) > 0;
    sqlite3_finalize(st);
    sqlite3_close(h);
    return current;
}
} // namespace

QString ensureDatabase(const QString& dir, qint64 rows, bool withTree, QString* error) {
    QDir().mkpath(dir);
    const QString file = QDir(dir).filePath(QStringLiteral("synthetic-%1.vosk").arg(rows));
    if (QFileInfo::exists(file) && hasCurrentSchema(file))
        return file;
    QFile::remove(file);
    QElapsedTimer t;
    t.start();
    const QString part = file + QStringLiteral(".part");
    QFile::remove(part);
    if (!GenerateSynthetic(part, rows, error))
        return QString();
    if (withTree && !GenerateBuildTree(part, treeRoot(), 10000, 4, error))
        return QString();
    QFile::rename(part, file);
    info(QStringLiteral("made %1 (%2 equipment rows)").arg(QFileInfo(file).fileName()).arg(rows),
         double(t.nsecsElapsed()) / 1e9, QStringLiteral("s"));
    return file;
}

QString equipmentListSql() {
    return GetSQL(equip::All, true, false, false, false, QString(), false);
}

void openDatabase(const QString& file) {
    db().open(QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=") + file + QLatin1Char(';'));
}

qint64 bareLoop(const QString& jetSql) {
    const TranslatedSql t = TranslateSql(jetSql);
    sqlite3_stmt* stmt = nullptr;
    const QByteArray sql = t.sql.toUtf8();
    if (sqlite3_prepare_v2(db().handle(), sql.constData(), int(sql.size()), &stmt, nullptr) != SQLITE_OK)
        return -1;
    for (int i = 0; i < t.params.size(); ++i) {
        const QByteArray p = t.params[i].toUtf8();
        sqlite3_bind_text(stmt, i + 1, p.constData(), int(p.size()), SQLITE_TRANSIENT);
    }
    const int cols = sqlite3_column_count(stmt);
    qint64 rows = 0;
    qint64 sink = 0;
    while (sqlite3_step(stmt) == SQLITE_ROW) {
        for (int c = 0; c < cols; ++c) {
            switch (sqlite3_column_type(stmt, c)) {
            case SQLITE_INTEGER:
                sink += sqlite3_column_int64(stmt, c);
                break;
            case SQLITE_FLOAT:
                sink += qint64(sqlite3_column_double(stmt, c));
                break;
            case SQLITE_NULL:
                break;
            default: {
                const unsigned char* text = sqlite3_column_text(stmt, c);
                sink += text ? text[0] + sqlite3_column_bytes(stmt, c) : 0;
            }
            }
        }
        ++rows;
    }
    sqlite3_finalize(stmt);
    return sink == -1 ? -1 : rows; // keeps the reads from being optimised away
}

namespace {
ListColors benchColors() {
    return ListColors{QColor(0, 0, 255), QColor(0, 128, 0)};
}
} // namespace

void fillList(ListModel& model, const QString& jetSql) {
    Recordset rs;
    rs.open(jetSql);
    model.load(rs, benchColors());
}

ShownList::ShownList() {
    view.setModel(&model);
    view.setSelectionMode(QAbstractItemView::SingleSelection);
    view.setSelectionBehavior(QAbstractItemView::SelectRows);
    view.header()->setStretchLastSection(false);
    view.resize(1280, 800);
    sorter.setListView(&view);
    view.show();
    QApplication::processEvents();
}

void loadShown(ShownList& list, const QString& jetSql) {
    auto rs = std::make_unique<Recordset>();
    rs->open(jetSql);
    QEventLoop loop;
    bool finished = false;
    const QMetaObject::Connection done = QObject::connect(&list.model, &ListModel::loadFinished, &loop, [&] {
        finished = true;
        loop.quit();
    });
    list.model.startLoad(std::move(rs), benchColors());
    // startLoad may have read everything before it returned; otherwise the slices come from the loop.
    if (!finished)
        loop.exec();
    QObject::disconnect(done);
    const ListModel::LoadError error = list.model.loadError();
    if (error.number != 0)
        throw VbError(error.number, error.description);
}

void paintShown(ShownList& list) {
    // A paint runs the view's pending layout first; events left after it (the header's) follow.
    list.view.viewport()->repaint();
    QApplication::processEvents();
}

int memoryChild(const QString& file, bool shown) {
    openDatabase(file);
    auto list = std::make_unique<ShownList>();
    ListModel plain;
    const qint64 before = residentBytes();
    if (shown) {
        loadShown(*list, equipmentListSql());
        paintShown(*list);
    } else {
        fillList(plain, equipmentListSql());
    }
    const qint64 after = residentBytes();
    const ListModel& model = shown ? list->model : plain;
    std::printf("%d %d %lld %lld %lld %lld\n", model.rowCount(), model.columnCount(), before, after,
                model.memoryUsed(), peakResidentBytes());
    std::fflush(stdout);
    // The process ends here: its memory goes back without a million rows freed one by one.
    std::_Exit(0);
}

} // namespace bench
