#pragma once
// What the main window's parts share; only the frmmain*.cpp files include it.
#include "app/frmmain.h"
#include "lists/finditem.h"

#include <QHash>
#include <QImage>
#include <QLabel>
#include <QPointer>
#include <QTreeView>

class ListViewSort;

// The record list: a tree view in report style that can paint the program's background picture
// behind its rows.
class ItemListView : public QTreeView {
public:
    using QTreeView::QTreeView;
    void setBackgroundPicture(const QImage& picture);
    const QImage& backgroundPicture() const { return m_picture; }

protected:
    void paintEvent(QPaintEvent* event) override;
    // The picture stays put while the rows scroll over it, so a scroll repaints the whole viewport
    // instead of moving the pixels already shown.
    void scrollContentsBy(int dx, int dy) override;

private:
    QImage m_picture;
    QImage m_scaled; // the picture at the size the viewport last needed
};

struct frmMain::Impl : FindStatus {
    explicit Impl(frmMain* w) : window(w) {}
    void setStatus(const QString& text) override { window->showStatus(text); }
    void setLoadTime(const QString& text) override { window->setPanelText(QStringLiteral("LoadTime"), text); }

    frmMain* window;
    ListModel* model = nullptr;
    ListViewSort* sorter = nullptr;
    QPointer<frmFind> find;
    QHash<QString, QLabel*> panels;
    QHash<QString, QAction*> actions;
    QHash<QString, std::function<void()>> handlers;
    QHash<QComboBox*, QWidget*> filterBoxes; // each filter with its caption, shown or hidden together
    bool background = false;
    int suspend = 0;      // >0 while the window itself sets the filters: no refresh on each change
    QString listCategory; // the category whose columns the list shows now
    QString listLayout;   // the name its column layout is kept under (ColumnLayoutKey)
    int rememberedRow = -1;
};

// Selects the entry with that text, or the first entry when the list no longer offers it.
void chooseEntry(QComboBox* box, const QString& text);

// Keeps filter changes made by the window itself from refreshing the list each time.
struct SuspendRefresh {
    explicit SuspendRefresh(int& counter) : c(counter) { ++c; }
    ~SuspendRefresh() { --c; }
    int& c;
};
