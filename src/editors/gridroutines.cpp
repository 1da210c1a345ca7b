#include "editors/gridroutines.h"

#include "core/prompt.h"
#include "data/errorreport.h"
#include "data/quotes.h"
#include "data/recordset.h"
#include "editors/gridmodel.h"
#include "views/modmain.h"

#include <cmath>
#include <optional>

namespace {
const QString Module = QStringLiteral("Module modMain");
const QString CrLf = QStringLiteral("\r\n");

// The engine's column kinds that make a numeric column: 32-bit whole numbers, singles and doubles.
// 16-bit whole numbers and currency stay text columns, as they always did.
bool numericKind(FieldKind kind) {
    return kind == FieldKind::Long || kind == FieldKind::Single || kind == FieldKind::Double;
}

// Half the defined size, rounded, as spaces. A memo's defined size is huge: a header never needs
// more than a line's worth.
QString widthSpaces(int definedSize) {
    const int n = int(std::lround(definedSize / 2.0));
    return QString(qBound(0, n, 255), QLatin1Char(' '));
}

// Restores the redraw switch however the routine leaves.
struct RedrawOff {
    explicit RedrawOff(GridModel& g) : grid(g) { grid.setRedraw(false); }
    ~RedrawOff() { grid.setRedraw(true); }
    GridModel& grid;
};
} // namespace

bool PopulateGrid(GridModel& grid, const QStringList& queries, bool formatAfter) {
    std::optional<VbError> failure;
    {
        RedrawOff hold(grid);
        try {
            Recordset rs;
            rs.open(queries.value(0));
            grid.clearRows();
            const int fields = rs.fieldCount();
            grid.setCols(fields + 1);
            QString format;
            for (int c = 1; c <= fields; ++c) {
                format += QLatin1Char('|') + FormatFieldName(rs.fieldName(c - 1)) +
                          widthSpaces(rs.definedSize(c - 1));
                grid.setColNumeric(c, numericKind(rs.fieldKind(c - 1)));
                grid.clearList(c);
            }
            grid.setFormatString(format);
            while (!rs.eof()) {
                const int row = grid.addRow();
                for (int c = 1; c <= fields; ++c)
                    grid.setText(row, c, NzString(rs.value(c - 1)));
                rs.moveNext();
            }
            rs.close();

            for (int i = 1; i < queries.size(); ++i) {
                const int bar = int(queries.at(i).lastIndexOf(QLatin1Char('|')));
                const QString query = queries.at(i).left(bar);
                const int col = queries.at(i).mid(bar + 1).trimmed().toInt();
                Recordset list;
                list.open(query);
                if (col == 1)
                    grid.addListItem(col, NoneEntry, NoneEntry);
                while (!list.eof()) {
                    const QString value = NzString(list.value(0));
                    grid.addListItem(col, value, value);
                    list.moveNext();
                }
                list.close();
            }
        } catch (const VbError& e) {
            failure = e;
        }
    }
    // Reported once the grid shows again, so that the box never paints over a grid held half-filled.
    const bool ok = !failure;
    if (failure) {
        grid.setLocked(true);
        ReportDBError(*failure, QStringLiteral("PopulateGrid"), Module);
    }
    if (ok && formatAfter)
        FormatUBGrids(grid);
    grid.setTag(GridFingerprint(grid));
    grid.setEditMode(12);
    grid.setAllowAdd(ok);
    return ok;
}

void FormatUBGrids(GridModel& grid) {
    {
        RedrawOff hold(grid);
        const int usable = qMax(0, grid.width() - 10);
        const int dataCols = grid.cols() - 1;
        // The name-and-amount grids give the name most of the room. A wider grid that happens to
        // have its amount second (the specials) shares the room out evenly like any other.
        if (dataCols == 2 && grid.header(2) == QLatin1String("Amount")) {
            grid.setColWidth(1, int(0.8 * usable));
            grid.setColWidth(2, int(0.2 * usable));
        } else if (dataCols > 0) {
            for (int c = 1; c <= dataCols; ++c)
                grid.setColWidth(c, usable / dataCols);
        }
        grid.setAppearance(15);
    }
}

bool ValidateGrid(const GridModel& grid, const QString& listName) {
    const bool locations = grid.name() == QLatin1String("ubgLocations");
    const QString title = listName + QStringLiteral(" Error");
    QString seen;
    for (int r = 1; r <= grid.lastDataRow(); ++r) {
        QString key = grid.text(r, 1);
        if (locations)
            key += QLatin1Char('|') + grid.text(r, 2);
        if (!key.isEmpty()) {
            const QString marked = QLatin1Char('|') + key + QLatin1Char('|');
            if (seen.contains(marked, Qt::CaseInsensitive)) {
                if (locations) {
                    MsgBox(listName + QLatin1Char(':') + CrLf + QStringLiteral("The Sector ") +
                               grid.text(r, 1) + QStringLiteral(" already has an entry for Nav Point ") +
                               grid.text(r, 2),
                           vb::Exclamation, title);
                } else {
                    MsgBox(listName + QLatin1Char(':') + CrLf + QStringLiteral("The value '") + key +
                               QStringLiteral("' appears more than once in the ") + grid.header(1) +
                               QStringLiteral(" list, please remove one"),
                           vb::Exclamation, title);
                }
                return false;
            }
            seen += marked;
        }
        for (int c = 1; c < grid.cols(); ++c) {
            if (grid.text(r, c).isEmpty()) {
                MsgBox(listName + QLatin1Char(':') + CrLf + QStringLiteral("Please specify an entry for ") +
                           grid.header(c) + CrLf + QStringLiteral("Row: ") + QString::number(r) +
                           QStringLiteral(",  Column: ") + QString::number(c),
                       vb::Information, title);
                return false;
            }
        }
    }
    return true;
}

bool SaveUBGrid(const GridModel& grid, const QString& saveQuery, const QString& keyColumn,
                const QString& keyValue) {
    try {
        Recordset rs;
        rs.open(saveQuery, db(), Recordset::Dynamic);
        if (!rs.eof()) {
            rs.moveFirst();
            while (!rs.eof()) {
                rs.deleteCurrent();
                rs.update();
                rs.moveNext();
            }
        }
        for (int r = 1; r <= grid.lastDataRow(); ++r) {
            rs.addNew();
            rs.setValue(keyColumn, keyValue);
            int c = 1;
            for (int i = 0; i < rs.fieldCount(); ++i) {
                if (rs.fieldName(i).compare(keyColumn, Qt::CaseInsensitive) == 0)
                    continue;
                const QString text = grid.text(r, c);
                if (!text.isEmpty())
                    rs.setValue(i, text);
                ++c;
            }
            rs.update();
        }
        rs.close();
        return true;
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("SaveUBGrid"), Module);
        return false;
    }
}

bool UpdateList(const QStringList& entries, const QString& table, const QString& keyColumn,
                const QString& valueColumn, const QString& keyValue) {
    try {
        db().execute(QStringLiteral("DELETE FROM ") + table + QStringLiteral(" WHERE ") + keyColumn +
                     QStringLiteral("= '") + keyValue + QLatin1Char('\''));
        for (const QString& entry : entries)
            db().execute(QStringLiteral("INSERT INTO ") + table + QLatin1Char('(') + keyColumn +
                         QStringLiteral(", ") + valueColumn + QStringLiteral(") VALUES ('") + keyValue +
                         QStringLiteral("', '") + FixQuotes(entry) + QStringLiteral("')"));
        return true;
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("UpdateList"), Module);
        return false;
    }
}

QString GridFingerprint(const GridModel& grid) {
    QString out;
    for (int r = 1; r <= grid.lastDataRow(); ++r) {
        for (int c = 1; c < grid.cols(); ++c)
            out += grid.text(r, c) + QLatin1Char('|');
        out += QLatin1Char('~');
    }
    return out;
}

bool GridChanged(const GridModel& grid) {
    return !grid.locked() && GridFingerprint(grid) != grid.tag();
}

void GridAfterEdit(GridModel& grid, int row, int col) {
    if (col == 1 && grid.text(row, 1) == NoneEntry)
        grid.removeRow(row);
    FormatUBGrids(grid);
}

void InstallStandardEdits(GridModel& grid) {
    grid.beforeEdit = nullptr;
    grid.afterEdit = GridAfterEdit;
}

void FillNavPointList(GridModel& grid, const QString& sector) {
    grid.clearList(2);
    grid.addListItem(2, NoneEntry, NoneEntry);
    Recordset rs;
    rs.open(QStringLiteral("SELECT NAV_POINT_NAME FROM NAV_POINTS WHERE SECTOR_NAME = '") +
            FixQuotes(sector) + QStringLiteral("' ORDER BY NAV_POINT_NAME"));
    while (!rs.eof()) {
        const QString point = NzString(rs.value(0));
        grid.addListItem(2, point, point);
        rs.moveNext();
    }
}

void InstallLocationRules(GridModel& grid, const QString& container) {
    grid.beforeEdit = [container](GridModel& g, int row, int col, bool& cancel) {
        if (col != 2)
            return;
        g.clearList(2);
        if (g.text(row, 1).isEmpty()) {
            MsgBox(QStringLiteral("Please set the Sector first."), vb::Exclamation);
            cancel = true;
            return;
        }
        try {
            FillNavPointList(g, g.text(row, 1));
        } catch (const VbError& e) {
            ReportDBError(e, g.name() + QStringLiteral("_BeforeEdit"), container);
        }
    };
    grid.afterEdit = [container](GridModel& g, int row, int col) {
        if (col == 1 && g.text(row, 1) != NoneEntry) {
            try {
                FillNavPointList(g, g.text(row, 1));
            } catch (const VbError& e) {
                ReportDBError(e, g.name() + QStringLiteral("_AfterEdit"), container);
            }
            g.setText(row, 2, QString());
        }
        GridAfterEdit(g, row, col);
    };
}
