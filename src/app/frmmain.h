#pragma once
// The program's one main window: categories, filters, the record list, status bar and menus.
#include "app/itemlistview.h"
#include "app/liststatements.h"

#include <QMainWindow>
#include <QString>
#include <functional>
#include <memory>

class QAction;
class QColor;
class QComboBox;
class QLineEdit;
class QMenu;
class QStatusBar;
class QUrl;
class ListModel;
class Recordset;
class frmFind;

class frmMain : public QMainWindow {
    Q_OBJECT
public:
    // Construction is the window's load: it reads the settings and fills the lists, without showing.
    explicit frmMain(QWidget* parent = nullptr);
    ~frmMain() override;

    // Makes sure that at least one game character is recorded.
    void CheckCharacters();
    // Reads the list again from the category's statement. A long list keeps coming in after this
    // returns (the first rows are shown at once); whenListLoaded runs work after its last row.
    void RefreshGrid();
    // Runs work at once when the list has all its rows, else after the last one. A refresh begun
    // before then drops it: the rows it was meant for are gone.
    void whenListLoaded(std::function<void()> work);
    // Fills the filter lists again from the open database (after a restore), keeping the choices it has.
    void ReloadFilterLists();

    // Settings of the window (section "Settings") and of the list's columns per category.
    void SaveSettings();
    void LoadSettings();
    void SaveColumnInfo();
    void LoadColumnInfo();

    // The category shown, the filters as chosen, the selected row's name (empty when none).
    QString category() const;
    ListFilters currentFilters() const;
    QString selectedName() const;
    ListModel* model() const;

    // The status bar's keyed panels: "Status", "ItemCount", "LoadTime", "Interaction".
    QString panelText(const QString& key) const;
    void setPanelText(const QString& key, const QString& text);
    // Sets the "Status" panel and paints it at once, before the long work that follows.
    void showStatus(const QString& text);
    // The "Interaction" panel after the game-interaction option.
    void setInteractionPanel(bool on);
    // Shows or removes the list's background picture (the option "Background").
    void setBackgroundShown(bool shown);
    bool backgroundShown() const;

    // A menu entry by its object name ("mnuEditFind"); nullptr when there is none.
    QAction* menuEntry(const QString& objectName) const;
    // Windows built later hand their action to the menu entry here; an entry without a handler
    // stays disabled. Entries that act on a record read category() and selectedName(). The pop-up
    // entries share the handler of their Edit menu twin ("mnuEditDelete", "mnuEditCopy",
    // "mnuEditRename"). Delete is called only after the user said Yes to "Are you sure...", and
    // the list is refreshed after it; copy and rename are called for the five categories that
    // support them (Stations get the "not implemented" box). A VbError thrown by a handler is
    // reported under the entry's name + "_Click".
    void setMenuHandler(const QString& objectName, std::function<void()> handler);
    // How an address is opened (the browser by default; tests record instead).
    static void setUrlOpener(std::function<bool(const QUrl&)> opener);
    frmFind* findDialog() const;

    // Widgets, named as the rest of the program knows them.
    QComboBox* cmbData = nullptr;
    QComboBox* cmbEquipType = nullptr;
    QComboBox* cmbLevel = nullptr;
    QComboBox* cmbChecked = nullptr;
    QComboBox* cmbCompType = nullptr;
    QComboBox* cmbSubType = nullptr;
    QComboBox* cmbCL = nullptr;
    QComboBox* cmbRace = nullptr;
    ItemListView* lstItems = nullptr;
    QLineEdit* txtSearch = nullptr; // narrows the list to the names that contain its text
    QStatusBar* statBar = nullptr;
    QMenu* mnuPopup = nullptr;

    // Event handlers, callable as the menu and the list call them.
    void cmbData_Click();
    void cmbCompType_Click();
    void filter_Click();
    void lstItems_DblClick();
    void lstItems_ItemCheck(int row, const QString& name, bool checked);
    void mnuPopupView_Click();
    void mnuEditEditItem_Click();
    void mnuEditFind_Click();
    void mnuEditDelete_Click();
    void mnuEditCopy_Click();
    void mnuEditRename_Click();
    void mnuViewBuidView_Click();
    void mnuHelpForum_Click();
    void mnuHelpWebsite_Click();
    void mnuHelpAbout_Click();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    struct Impl;
    Impl* d = nullptr;

    void buildWidgets();
    void buildMenus();
    void updateMenuState();
    void fillFilterLists();
    void fillSubTypes();
    void showFiltersFor(const QString& category);
    void setToolTips();
    void SetRStoList(std::unique_ptr<Recordset> rs);
    void showLoadProgress();
    void listLoaded();
    void showLegend(const QColor& updated, const QColor& personal);
    void fitWindowToColumns();
    void openRecord(bool editor);
    void openUrlOf(const QString& section);
    void runHandler(const QString& objectName);
    void copyOrRename(const QString& entry, const QString& verb);
};

// The main window while it exists (the owner of the splash and of the views), else nullptr.
frmMain* mainWindow();
