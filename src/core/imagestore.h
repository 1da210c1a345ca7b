#pragma once
// The image store: pictures by name within named groups. The pictures are files in the program
// folder, "images/<GROUP>/<name>" ("images/ITEM_ICON/0.gif", "images/IMAGE/BG_VOSK.GIF"), made by the
// build's picture generator. A picture is decoded once and kept.
#include <QHash>
#include <QImage>
#include <QString>

class ImageStore {
public:
    static ImageStore& instance();

    // A null image when the group has no picture of that name.
    QImage picture(const QString& group, const QString& name);
    int count(const QString& group);
    void release(); // drops every decoded picture (shutdown)

private:
    QString folderOf(const QString& group) const;
    QHash<QString, QImage> m_cache;
    QHash<QString, int> m_counts;
};

// The item icon numbered index: "<index>.gif" of the group "ITEM_ICON".
QImage GetItemIcon(long index);
long GetItemIconCount();
