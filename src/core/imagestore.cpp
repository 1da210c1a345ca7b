#include "core/imagestore.h"
#include "core/programfolder.h"

#include <QDir>

ImageStore& ImageStore::instance() {
    static ImageStore store;
    return store;
}

QString ImageStore::folderOf(const QString& group) const {
    return programFolder() + QStringLiteral("/images/") + group;
}

QImage ImageStore::picture(const QString& group, const QString& name) {
    const QString key = group + QLatin1Char('/') + name;
    auto it = m_cache.constFind(key);
    if (it != m_cache.constEnd())
        return *it;
    QImage img(folderOf(group) + QLatin1Char('/') + name);
    m_cache.insert(key, img);
    return img;
}

int ImageStore::count(const QString& group) {
    auto it = m_counts.constFind(group);
    if (it != m_counts.constEnd())
        return *it;
    const int n = int(QDir(folderOf(group)).entryList(QDir::Files).size());
    m_counts.insert(group, n);
    return n;
}

void ImageStore::release() {
    m_cache.clear();
    m_counts.clear();
}

QImage GetItemIcon(long index) {
    return ImageStore::instance().picture(QStringLiteral("ITEM_ICON"),
                                          QString::number(index) + QStringLiteral(".gif"));
}

long GetItemIconCount() {
    return ImageStore::instance().count(QStringLiteral("ITEM_ICON"));
}
