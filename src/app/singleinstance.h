#pragma once
// Only one copy of the program may run for a user: the running copy holds a lock file in the user's
// runtime folder (not the program folder, which may be shared or read-only).
#include <QString>

// True when this process now holds the lock (or held it already); false when another copy holds it.
bool AcquireInstanceLock();
void ReleaseInstanceLock();
QString instanceLockPath();
// Tests use a lock file of their own.
void setInstanceLockPath(const QString& path);
