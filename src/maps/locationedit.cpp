#include "maps/locationedit.h"

#include "core/prompt.h"
#include "data/database.h"
#include "data/quotes.h"
#include "data/recordset.h"
#include "views/modmain.h"

#include <QLocale>

#include <cmath>

namespace {
constexpr double kFarthest = 1e9;

bool refuse(const QString& text, const QString& title) {
    MsgBox(text, vb::Exclamation, title);
    return false;
}

// SQL text of a coordinate: the shortest form that reads back as the same number, never an exponent.
QString number(double v) {
    return QString::number(v, 'f', QLocale::FloatingPointShortest);
}

QString quoted(const QString& text) {
    return QLatin1Char('\'') + FixQuotes(text) + QLatin1Char('\'');
}

QString textOrNull(const QString& text) {
    return text.isEmpty() ? QStringLiteral("NULL") : quoted(text);
}

// Runs work inside one transaction; anything thrown rolls it back and is passed on.
template <typename Work> auto inTransaction(Work work) {
    Database& cn = db();
    cn.beginTrans();
    try {
        return work(cn);
    } catch (...) {
        if (cn.inTransaction()) {
            try {
                cn.rollbackTrans();
            } catch (...) {
                // The first error is the one worth reporting.
            }
        }
        throw;
    }
}
} // namespace

bool ParseCoordinate(const QString& text, double* value) {
    const QString t = text.trimmed();
    if (t.isEmpty())
        return false;
    bool ok = false;
    double v = QLocale().toDouble(t, &ok);
    if (!ok)
        v = QLocale::c().toDouble(t, &ok);
    if (!ok || !std::isfinite(v) || std::fabs(v) > kFarthest)
        return false;
    *value = v == 0 ? 0 : v; // no "-0" in the database
    return true;
}

bool CheckLocation(const LocationInput& in, NavPoint* out) {
    NavPoint p;
    p.sector = in.sector;
    p.name = in.name.trimmed();
    p.type = in.type.trimmed();
    p.kind = NavKindOf(p.type);
    p.comments = in.comments.trimmed();
    if (p.sector.isEmpty())
        return refuse(QStringLiteral("Please choose a sector first."), QStringLiteral("No Sector"));
    if (p.name.isEmpty())
        return refuse(QStringLiteral("Please enter a name for the location."),
                      QStringLiteral("Missing Name"));
    if (!ValidName(p.name))
        return refuse(
            QStringLiteral("Names cannot contain a double single-quote! Please change name to continue."),
            QStringLiteral("Invalid name"));
    if (p.type.isEmpty())
        return refuse(QStringLiteral("Please choose the type of the location."),
                      QStringLiteral("Missing Type"));
    const char* axes[] = {"X", "Y"};
    const QString* texts[] = {&in.x, &in.y};
    double* values[] = {&p.x, &p.y};
    for (int i = 0; i < 2; ++i)
        if (!ParseCoordinate(*texts[i], values[i]))
            return refuse(QStringLiteral("The %1 coordinate must be a number between -1000000000 and "
                                         "1000000000, such as 1250 or -340.5.")
                              .arg(QLatin1String(axes[i])),
                          QStringLiteral("Invalid Coordinate"));
    *out = p;
    return true;
}

void AddLocation(const NavPoint& p) {
    inTransaction([&](Database& cn) {
        cn.execute(
            "INSERT INTO NAV_POINTS (NAV_POINT_NAME, SECTOR_NAME, COMMENTS, X_POINT, Y_POINT, NAV_TYPE) "
            "VALUES (" +
            quoted(p.name) + ", " + quoted(p.sector) + ", " + textOrNull(p.comments) + ", " + number(p.x) +
            ", " + number(p.y) + ", " + quoted(p.type) + ")");
        cn.commitTrans();
    });
}

SaveResult UpdateLocation(const NavPoint& before, const NavPoint& after) {
    return inTransaction([&](Database& cn) {
        QStringList set;
        if (after.name != before.name)
            set << "NAV_POINT_NAME = " + quoted(after.name);
        if (after.type != before.type)
            set << "NAV_TYPE = " + quoted(after.type);
        if (after.x != before.x)
            set << "X_POINT = " + number(after.x);
        if (after.y != before.y)
            set << "Y_POINT = " + number(after.y);
        if (after.comments != before.comments)
            set << "COMMENTS = " + textOrNull(after.comments);
        if (set.isEmpty()) {
            cn.rollbackTrans();
            return SaveResult::NothingChanged;
        }
        const QString where =
            " WHERE SECTOR_NAME = " + quoted(before.sector) + " AND NAV_POINT_NAME = " + quoted(before.name);
        if (cn.execute("UPDATE NAV_POINTS SET " + set.join(QStringLiteral(", ")) + where) == 0)
            throw NoCurrentRecord();
        if (after.name != before.name)
            cn.execute("UPDATE MOBS_LOCATION SET NAV_POINT = " + quoted(after.name) +
                       " WHERE SECTOR_NAME = " + quoted(before.sector) +
                       " AND NAV_POINT = " + quoted(before.name));
        cn.commitTrans();
        return SaveResult::Saved;
    });
}

QStringList MobsSpawningAt(const QString& sector, const QString& navPoint) {
    Recordset rs;
    rs.open("SELECT MOB_NAME FROM MOBS_LOCATION WHERE SECTOR_NAME = '" + FixQuotes(sector) +
            "' AND NAV_POINT = '" + FixQuotes(navPoint) + "' ORDER BY MOB_NAME");
    QStringList mobs;
    for (; !rs.eof(); rs.moveNext()) {
        const QString mob = NzString(rs.value(0));
        if (!mobs.contains(mob))
            mobs << mob;
    }
    return mobs;
}

bool DeleteLocation(const QString& sector, const QString& navPoint, bool confirm) {
    const QStringList mobs = MobsSpawningAt(sector, navPoint);
    if (!mobs.isEmpty())
        return refuse("'" + navPoint +
                          "' cannot be deleted while MOBs spawn there: " + mobs.join(QStringLiteral(", ")) +
                          ".\r\nRemove those spawn locations from the MOBs first.",
                      QStringLiteral("Location In Use"));
    if (confirm && MsgBox("Are you sure you want to delete '" + navPoint + "' ?", vb::YesNo + vb::Question,
                          QStringLiteral("Delete?")) != vb::Yes)
        return false;
    return inTransaction([&](Database& cn) {
        const long rows = cn.execute("DELETE FROM NAV_POINTS WHERE SECTOR_NAME = " + quoted(sector) +
                                     " AND NAV_POINT_NAME = " + quoted(navPoint));
        if (rows == 0) {
            cn.rollbackTrans();
            MsgBox("'" + navPoint + "' is no longer in the database.", vb::Information,
                   QStringLiteral("Location Not Found"));
            return false;
        }
        cn.commitTrans();
        return true;
    });
}
