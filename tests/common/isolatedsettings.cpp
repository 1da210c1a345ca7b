#include "isolatedsettings.h"

#include <QDir>
#include <QSettings>

namespace {
void pointStoreAt(const QString& folder) {
    for (const auto format : {QSettings::NativeFormat, QSettings::IniFormat})
        for (const auto scope : {QSettings::UserScope, QSettings::SystemScope})
            QSettings::setPath(format, scope,
                               folder + (scope == QSettings::UserScope ? QStringLiteral("/user")
                                                                       : QStringLiteral("/system")));
}
} // namespace

IsolatedSettings::IsolatedSettings() {
    pointStoreAt(m_dir.path());
}

void IsolatedSettings::clear() {
    QDir(m_dir.path()).removeRecursively();
    QDir().mkpath(m_dir.path());
}
