#include "app/aboutfacts.h"

#include "core/programfolder.h"
#include "data/database.h"
#include "data/recordset.h"

#include <QDir>

#include <sqlite3.h>

AboutFacts GatherAboutFacts() {
    AboutFacts f;
    f.version =
        QStringLiteral("%1.%2.%3").arg(VOSK_VERSION_MAJOR).arg(VOSK_VERSION_MINOR).arg(VOSK_VERSION_REVISION);
    f.databasePath = QDir::toNativeSeparators(databasePath());
    f.qtVersion = QLatin1String(qVersion());
    if (f.qtVersion != QLatin1String(QT_VERSION_STR))
        f.qtVersion += QStringLiteral(" (built with ") + QLatin1String(QT_VERSION_STR) + u')';
    f.sqliteVersion = QLatin1String(sqlite3_libversion());
    const QList<QPair<const char*, const char*>> tables = {{"Equipment", "EQUIPMENTS"},
                                                           {"Components", "COMPONENTS"},
                                                           {"Raw Materials", "RAW_MATERIALS"},
                                                           {"Items", "ITEMS"},
                                                           {"MOBs", "MOBS"},
                                                           {"Stations", "STATIONS"},
                                                           {"Sectors", "SECTORS"},
                                                           {"Navigation Points", "NAV_POINTS"}};
    for (const auto& [kind, table] : tables) {
        qint64 n = -1;
        if (db().isOpen()) {
            try {
                Recordset rs;
                rs.open(QStringLiteral("SELECT COUNT(*) FROM ") + QLatin1String(table));
                if (!rs.eof())
                    n = rs.intValue(0);
                rs.close();
            } catch (const std::exception&) {
                // A table that cannot be counted is shown as such; the box still opens.
                db().clearErrors();
            }
        }
        f.counts.append({QLatin1String(kind), n});
    }
    return f;
}

QString LicenceText() {
    return QStringLiteral(
        "MIT License\n\n"
        "Copyright (c) the VOSK developers\n\n"
        "Permission is hereby granted, free of charge, to any person obtaining a copy of this software and "
        "associated documentation files (the \"Software\"), to deal in the Software without restriction, "
        "including without limitation the rights to use, copy, modify, merge, publish, distribute, "
        "sublicense, and/or sell copies of the Software, and to permit persons to whom the Software is "
        "furnished to do so, subject to the following conditions:\n\n"
        "The above copyright notice and this permission notice shall be included in all copies or "
        "substantial portions of the Software.\n\n"
        "THE SOFTWARE IS PROVIDED \"AS IS\", WITHOUT WARRANTY OF ANY KIND, EXPRESS OR IMPLIED, INCLUDING "
        "BUT NOT LIMITED TO THE WARRANTIES OF MERCHANTABILITY, FITNESS FOR A PARTICULAR PURPOSE AND "
        "NONINFRINGEMENT. IN NO EVENT SHALL THE AUTHORS OR COPYRIGHT HOLDERS BE LIABLE FOR ANY CLAIM, "
        "DAMAGES OR OTHER LIABILITY, WHETHER IN AN ACTION OF CONTRACT, TORT OR OTHERWISE, ARISING FROM, OUT "
        "OF OR IN CONNECTION WITH THE SOFTWARE OR THE USE OR OTHER DEALINGS IN THE SOFTWARE.\n");
}
