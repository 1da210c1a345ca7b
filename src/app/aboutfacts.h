#pragma once
// What the about box tells: the program's version, the database it works on and how many records of
// each kind it holds, the versions of Qt and SQLite, and the licence.
#include <QList>
#include <QString>

struct RecordCount {
    QString kind; // "Equipment"
    qint64 count; // -1 when it could not be counted
};

struct AboutFacts {
    QString version; // "1.0.0"
    QString databasePath;
    QList<RecordCount> counts;
    QString qtVersion; // the Qt the program runs on (and, when different, the one it was built with)
    QString sqliteVersion;
};

AboutFacts GatherAboutFacts();
// The licence the program is distributed under, as its text.
QString LicenceText();
