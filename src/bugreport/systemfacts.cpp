#include "bugreport/systemfacts.h"

#include <QFile>
#include <QRegularExpression>
#include <QSysInfo>

#include <sqlite3.h>

#ifdef Q_OS_WIN
#include <QSettings>
#include <windows.h>
#endif

namespace {
const QString NoValue = QStringLiteral("No Value Found");

QString readText(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QString();
}

// The value of "key : value" lines (cpuinfo) or "key: value kB" lines (meminfo), first occurrence.
QString field(const QString& text, const QString& key) {
    const QRegularExpression re(QStringLiteral("^") + QRegularExpression::escape(key) +
                                    QStringLiteral("\\s*:\\s*(.*)$"),
                                QRegularExpression::MultilineOption);
    const QRegularExpressionMatch m = re.match(text);
    return m.hasMatch() ? m.captured(1).trimmed() : QString();
}
} // namespace

QString WindowsVersionName(long platformId, long major, long minor) {
    switch (platformId) {
    case 0:
        return QStringLiteral("Win32s");
    case 1:
        if (minor == 0)
            return QStringLiteral("Windows 95");
        if (minor == 90)
            return QStringLiteral("Windows ME");
        return QStringLiteral("Windows 98");
    case 2:
        if (major == 5 && minor == 0)
            return QStringLiteral("Windows 2000");
        if (major == 5 && minor == 1)
            return QStringLiteral("Windows XP");
        return QStringLiteral("Windows NT");
    default:
        return QString();
    }
}

QString WindowsVersionText(const WindowsVersionInfo& info) {
    QString pack = info.servicePack;
    const qsizetype nul = pack.indexOf(QChar(u'\0'));
    if (nul >= 0)
        pack.truncate(nul);
    return WindowsVersionName(info.platformId, info.major, info.minor) + u' ' + QString::number(info.major) +
           u'.' + QString::number(info.minor) + QStringLiteral(" build ") +
           QString::number(info.buildNumber & 0xFFFF) + QStringLiteral(" (") + pack + u')';
}

QString KbyteText(qint64 kbytes) {
    QString digits = kbytes == 0 ? QString() : QString::number(kbytes < 0 ? -kbytes : kbytes);
    for (qsizetype i = digits.size() - 3; i > 0; i -= 3)
        digits.insert(i, u',');
    if (kbytes < 0)
        digits.prepend(u'-');
    return digits + QStringLiteral(" Kbyte");
}

QString CpuTextFromCpuInfo(const QString& cpuinfo) {
    QString name = field(cpuinfo, QStringLiteral("model name"));
    if (name.isEmpty())
        name = field(cpuinfo, QStringLiteral("Model")); // ARM boards name the machine here
    if (name.isEmpty())
        return NoValue;
    name = name.simplified();
    bool ok = false;
    const double mhz = field(cpuinfo, QStringLiteral("cpu MHz")).toDouble(&ok);
    return ok ? name + QStringLiteral(" (") + QString::number(qRound64(mhz)) + QStringLiteral(" MHz)") : name;
}

bool MemoryFromMemInfo(const QString& meminfo, qint64* totalKb, qint64* freeKb) {
    auto kb = [&](const QString& key, bool* ok) {
        QString v = field(meminfo, key);
        v.remove(QStringLiteral("kB")).remove(QStringLiteral("KB"));
        return v.trimmed().toLongLong(ok);
    };
    bool okTotal = false, okFree = false;
    const qint64 total = kb(QStringLiteral("MemTotal"), &okTotal);
    qint64 free = kb(QStringLiteral("MemAvailable"), &okFree);
    if (!okFree) // kernels before 3.14 have no estimate of what is available: take what is unused
        free = kb(QStringLiteral("MemFree"), &okFree);
    if (!okTotal || !okFree)
        return false;
    *totalKb = total;
    *freeKb = free;
    return true;
}

SystemFacts GatherSystemFacts() {
    SystemFacts f;
    f.databaseVersion = QStringLiteral("SQLite ") + QLatin1String(sqlite3_libversion());
#ifdef Q_OS_WIN
    OSVERSIONINFOW v{};
    v.dwOSVersionInfoSize = sizeof(v);
#if defined(_MSC_VER)
#pragma warning(push)
#pragma warning(disable : 4996) // deprecated, and still the call that fills this very record
#endif
    const bool known = GetVersionExW(&v);
#if defined(_MSC_VER)
#pragma warning(pop)
#endif
    if (known)
        f.os = WindowsVersionText({long(v.dwPlatformId), long(v.dwMajorVersion), long(v.dwMinorVersion),
                                   long(v.dwBuildNumber), QString::fromWCharArray(v.szCSDVersion)});
    const QSettings cpu(
        QStringLiteral("HKEY_LOCAL_MACHINE\\HARDWARE\\DESCRIPTION\\System\\CentralProcessor\\0"),
        QSettings::NativeFormat);
    const QString name = cpu.value(QStringLiteral("ProcessorNameString")).toString().trimmed();
    f.cpu = v.dwPlatformId == 1 ? QStringLiteral("Win9x (no CPU Info available)")
            : name.isEmpty()    ? NoValue
                                : name + QStringLiteral(" (") + cpu.value(QStringLiteral("~MHz")).toString() +
                                   QStringLiteral(" MHz)");
    MEMORYSTATUSEX m{};
    m.dwLength = sizeof(m);
    if (GlobalMemoryStatusEx(&m)) {
        f.totalMemory = KbyteText(qint64(m.ullTotalPhys / 1024));
        f.freeMemory = KbyteText(qint64(m.ullAvailPhys / 1024));
    }
#else
    f.os = QSysInfo::prettyProductName() + QStringLiteral(", kernel ") + QSysInfo::kernelVersion() +
           QStringLiteral(" (") + QSysInfo::currentCpuArchitecture() + u')';
    f.cpu = CpuTextFromCpuInfo(readText(QStringLiteral("/proc/cpuinfo")));
    qint64 total = 0, free = 0;
    if (MemoryFromMemInfo(readText(QStringLiteral("/proc/meminfo")), &total, &free)) {
        f.totalMemory = KbyteText(total);
        f.freeMemory = KbyteText(free);
    }
#endif
    if (f.os.isEmpty())
        f.os = NoValue;
    if (f.totalMemory.isEmpty())
        f.totalMemory = f.freeMemory = NoValue;
    return f;
}
