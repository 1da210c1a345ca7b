#pragma once
// What the main window's parts share; only the frmmain*.cpp files include it.
#include "app/frmmain.h"
#include "lists/finditem.h"

#include <QElapsedTimer>
#include <QHash>
#include <QImage>
#include <QLabel>
#include <QPointer>

class ListViewSort;

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
    bool refreshing = false;                      // inside RefreshGrid
    QElapsedTimer loadClock;                      // since the refresh began
    std::vector<std::function<void()>> afterLoad; // whenListLoaded's work for the list coming in
};

// Selects the entry with that text, or the first entry when the list no longer offers it.
void chooseEntry(QComboBox* box, const QString& text);

// Keeps filter changes made by the window itself from refreshing the list each time.
struct SuspendRefresh {
    explicit SuspendRefresh(int& counter) : c(counter) { ++c; }
    ~SuspendRefresh() { --c; }
    int& c;
};
