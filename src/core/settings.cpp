#include "core/settings.h"

#include <QSettings>

namespace {
QSettings store() {
    return QSettings(QSettings::NativeFormat, QSettings::UserScope, "VOSK", "VOSK");
}
QString path(const QString& section, const QString& key) {
    return section + QLatin1Char('/') + key;
}
} // namespace

QString GetSetting(const QString& section, const QString& key, const QString& defaultValue) {
    return store().value(path(section, key), defaultValue).toString();
}

void SaveSetting(const QString& section, const QString& key, const QString& value) {
    QSettings s = store();
    s.setValue(path(section, key), value);
}

void DeleteSetting(const QString& section, const QString& key) {
    QSettings s = store();
    s.remove(key.isEmpty() ? section : path(section, key));
}

bool DeleteAllSettings() {
    QSettings s = store();
    s.clear();
    s.sync();
    return s.status() == QSettings::NoError;
}

bool textBool(const QString& s) {
    return s.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0 || s == QLatin1String("1") ||
           s == QLatin1String("-1");
}

namespace opt {
QString text(const Option& o) {
    return GetSetting("Options", o.key, o.defaultValue);
}
bool flag(const Option& o) {
    return textBool(text(o));
}
long number(const Option& o) {
    return text(o).toLong();
}
void save(const Option& o, const QString& value) {
    SaveSetting("Options", o.key, value);
}
void saveFlag(const Option& o, bool value) {
    save(o, boolText(value));
}
} // namespace opt
