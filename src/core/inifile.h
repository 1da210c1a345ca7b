#pragma once
// Reading and writing the program's settings file "VOSK.ini" (tooltip texts by section and key,
// addresses, row colours) the way private profile files work: sections and keys compare without
// regard to case, a value is the rest of the line after "=", nothing in the value is interpreted.
#include <QString>

QString ReadIni(const QString& file, const QString& section, const QString& key,
                const QString& defaultValue = QString());
// Writes or replaces one key, creating the section or file when missing. False when it cannot write.
bool WriteIni(const QString& file, const QString& section, const QString& key, const QString& value);

// The same on "VOSK.ini" in the program folder.
QString ReadVoskIni(const QString& section, const QString& key, const QString& defaultValue = QString());
