#include "app/singleinstance.h"

#include <QDir>
#include <QLockFile>
#include <QStandardPaths>
#include <memory>

namespace {
QString& pathRef() {
    static QString path;
    return path;
}
std::unique_ptr<QLockFile>& lockRef() {
    static std::unique_ptr<QLockFile> lock;
    return lock;
}
} // namespace

QString instanceLockPath() {
    QString& path = pathRef();
    if (path.isEmpty()) {
        QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
        if (folder.isEmpty())
            folder = QDir::tempPath();
        path = folder + QStringLiteral("/VOSK.instance.lock");
    }
    return path;
}

void setInstanceLockPath(const QString& path) {
    ReleaseInstanceLock();
    pathRef() = path;
}

bool AcquireInstanceLock() {
    auto& lock = lockRef();
    if (lock)
        return true;
    auto candidate = std::make_unique<QLockFile>(instanceLockPath());
    // A lock left by a copy that crashed names a process that no longer exists and is taken over; a
    // running copy never loses its lock to age.
    candidate->setStaleLockTime(0);
    if (!candidate->tryLock(0))
        return false;
    lock = std::move(candidate);
    return true;
}

void ReleaseInstanceLock() {
    lockRef().reset();
}
