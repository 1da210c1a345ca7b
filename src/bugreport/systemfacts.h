#pragma once
// The facts about the machine that a bug report carries: operating system, processor, memory, the
// database engine's version. Gathered from the machine the program runs on; the texts are built by
// small functions that can be tried on any input.
#include <QString>

struct SystemFacts {
    QString os;              // "Debian GNU/Linux 12 (bookworm), kernel 6.1.0 (x86_64)"
    QString cpu;             // "AMD EPYC 7B13 (2450 MHz)" or "No Value Found"
    QString totalMemory;     // "16,314,040 Kbyte"
    QString freeMemory;      // "9,018,112 Kbyte"
    QString databaseVersion; // "SQLite 3.40.1" (the data-access library of this program)
};

SystemFacts GatherSystemFacts();

// The operating-system version record of Windows, named as the program always named it.
struct WindowsVersionInfo {
    long platformId = 0; // 0 Win32s, 1 the Windows 95 line, 2 the NT line
    long major = 0;
    long minor = 0;
    long buildNumber = 0;
    QString servicePack; // may hold a NUL and whatever follows it
};
QString WindowsVersionName(long platformId, long major, long minor);
// name + " " + major.minor + " build " + low 16 bits of the build + " (" + service pack + ")".
QString WindowsVersionText(const WindowsVersionInfo& info);

// Kilobytes with the grouping "###,###,###,###" and " Kbyte" (nothing before " Kbyte" for 0, as the
// pattern writes zero).
QString KbyteText(qint64 kbytes);

// The processor from the text of /proc/cpuinfo: the first processor's model name and clock,
// "name (MHz MHz)"; "No Value Found" without a model name.
QString CpuTextFromCpuInfo(const QString& cpuinfo);
// Total and available memory in kilobytes from the text of /proc/meminfo; false when either is missing.
bool MemoryFromMemInfo(const QString& meminfo, qint64* totalKb, qint64* freeKb);
