// The main window's menus and pop-up menu. Entries whose windows are not part of the program yet
// stay disabled until a handler is installed for them (setMenuHandler).
#include "app/frmmain_p.h"

#include "core/inifile.h"
#include "core/programfolder.h"
#include "core/prompt.h"
#include "data/errorreport.h"
#include "lists/frmfind.h"
#include "lists/listmodel.h"
#include "views/openviews.h"

#include <QDesktopServices>
#include <QItemSelectionModel>
#include <QKeySequence>
#include <QMenuBar>
#include <QUrl>

namespace {
std::function<bool(const QUrl&)>& urlOpener() {
    static std::function<bool(const QUrl&)> opener = [](const QUrl& url) {
        return QDesktopServices::openUrl(url);
    };
    return opener;
}

// Entries that act on the selected record, and those the five editable categories share.
const QStringList RecordEntries = {"mnuEditEditItem", "mnuPopupEditItem", "mnuPopupView",     "mnuEditDelete",
                                   "mnuPopupDelete",  "mnuEditCopy",      "mnuPopupCopy",     "mnuEditRename",
                                   "mnuPopupRename",  "mnuViewBuidView",  "mnuPopupBuildview"};
bool copyable(const QString& cat) {
    return cat == listcat::Equipment || cat == listcat::Components || cat == listcat::RawMaterials ||
           cat == listcat::Items || cat == listcat::MOBs;
}
} // namespace

void frmMain::setUrlOpener(std::function<bool(const QUrl&)> opener) {
    urlOpener() = opener ? std::move(opener) : [](const QUrl& url) { return QDesktopServices::openUrl(url); };
}

void frmMain::buildMenus() {
    auto entry = [this](QMenu* menu, const char* name, const QString& caption, auto slot,
                        const QKeySequence& keys = {}) {
        auto* a = menu->addAction(caption);
        a->setObjectName(QLatin1String(name));
        if (!keys.isEmpty())
            a->setShortcut(keys);
        connect(a, &QAction::triggered, this, slot);
        d->actions.insert(QLatin1String(name), a);
        return a;
    };
    auto handed = [this](const char* name) { return [this, name] { runHandler(QLatin1String(name)); }; };

    QMenu* file = menuBar()->addMenu(tr("&File"));
    entry(file, "mnuFileBackupDB", tr("&Backup Database..."), handed("mnuFileBackupDB"));
    entry(file, "mnuFileRestoreDB", tr("&Restore Database..."), handed("mnuFileRestoreDB"));
    file->addSeparator();
    entry(file, "mnuFileOptions", tr("&Options..."), handed("mnuFileOptions"));
    file->addSeparator();
    entry(file, "mnuFileExit", tr("E&xit"), [this] { close(); });

    QMenu* add = menuBar()->addMenu(tr("&Add"));
    entry(add, "mnuAddEquip", tr("Add &Equipment"), handed("mnuAddEquip"));
    entry(add, "mnuAddComps", tr("Add &Component"), handed("mnuAddComps"));
    entry(add, "mnuAddRawMaterial", tr("Add &Raw Material"), handed("mnuAddRawMaterial"));
    entry(add, "mnuAddItem", tr("Add &Item"), handed("mnuAddItem"));

    QMenu* edit = menuBar()->addMenu(tr("&Edit"));
    entry(edit, "mnuEditEditItem", tr("&Edit Item..."), [this] { mnuEditEditItem_Click(); });
    entry(
        edit, "mnuEditDelete", tr("&Delete"), [this] { mnuEditDelete_Click(); }, QKeySequence::Delete);
    entry(edit, "mnuEditCopy", tr("&Copy..."), [this] { mnuEditCopy_Click(); });
    entry(edit, "mnuEditRename", tr("&Rename..."), [this] { mnuEditRename_Click(); });
    edit->addSeparator();
    entry(
        edit, "mnuEditFind", tr("&Find..."), [this] { mnuEditFind_Click(); }, QKeySequence::Find);

    QMenu* view = menuBar()->addMenu(tr("&View"));
    entry(view, "mnuViewBuidView", tr("&Build View"), [this] { mnuViewBuidView_Click(); });
    entry(view, "mnuViewMaps", tr("Sector &Maps"), handed("mnuViewMaps"));
    view->addSeparator();
    entry(
        view, "mnuViewRefresh", tr("&Refresh"), [this] { RefreshGrid(); }, QKeySequence::Refresh);

    QMenu* print = menuBar()->addMenu(tr("&Print"));
    entry(print, "mnuPrintPrintFilteredList", tr("Print &Filtered List..."),
          handed("mnuPrintPrintFilteredList"));

    QMenu* help = menuBar()->addMenu(tr("&Help"));
    entry(help, "mnuHelpHelp", tr("&Help Topics"), handed("mnuHelpHelp"), QKeySequence::HelpContents);
    entry(help, "mnuHelpReadMe", tr("&Read Me"), handed("mnuHelpReadMe"));
    help->addSeparator();
    entry(help, "mnuHelpForum", tr("VOSK &Forum"), [this] { mnuHelpForum_Click(); });
    entry(help, "mnuHelpWebsite", tr("VOSK &Website"), [this] { mnuHelpWebsite_Click(); });
    entry(help, "mnuHelpSubmitBug", tr("&Submit a Bug..."), handed("mnuHelpSubmitBug"));
    help->addSeparator();
    entry(help, "mnuHelpAbout", tr("&About VOSK"), [this] { mnuHelpAbout_Click(); });

    mnuPopup = new QMenu(this);
    mnuPopup->setObjectName(QStringLiteral("mnuPopup"));
    entry(mnuPopup, "mnuPopupView", tr("&View"), [this] { mnuPopupView_Click(); });
    entry(mnuPopup, "mnuPopupEditItem", tr("&Edit Item..."), [this] { mnuEditEditItem_Click(); });
    entry(mnuPopup, "mnuPopupBuildview", tr("&Build View"), [this] { mnuViewBuidView_Click(); });
    mnuPopup->addSeparator();
    entry(mnuPopup, "mnuPopupDelete", tr("&Delete"), [this] { mnuEditDelete_Click(); });
    entry(mnuPopup, "mnuPopupCopy", tr("&Copy..."), [this] { mnuEditCopy_Click(); });
    entry(mnuPopup, "mnuPopupRename", tr("&Rename..."), [this] { mnuEditRename_Click(); });
    mnuPopup->addSeparator();
    entry(mnuPopup, "mnuPopupFind", tr("&Find..."), [this] { mnuEditFind_Click(); });

    for (QMenu* m : menuBar()->findChildren<QMenu*>())
        connect(m, &QMenu::aboutToShow, this, &frmMain::updateMenuState);
    connect(mnuPopup, &QMenu::aboutToShow, this, &frmMain::updateMenuState);
    connect(lstItems, &QWidget::customContextMenuRequested, this, [this](const QPoint& pos) {
        const QModelIndex at = lstItems->indexAt(pos);
        if (at.isValid())
            lstItems->setCurrentIndex(at);
        updateMenuState();
        mnuPopup->popup(lstItems->viewport()->mapToGlobal(pos));
    });
    // The record entries follow the selection, so that their shortcuts work only when they apply.
    connect(lstItems->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &frmMain::updateMenuState);
    updateMenuState();
}

QAction* frmMain::menuEntry(const QString& objectName) const {
    return d->actions.value(objectName);
}

void frmMain::setMenuHandler(const QString& objectName, std::function<void()> handler) {
    if (handler)
        d->handlers.insert(objectName, std::move(handler));
    else
        d->handlers.remove(objectName);
    updateMenuState();
}

void frmMain::runHandler(const QString& objectName) {
    const auto h = d->handlers.value(objectName);
    if (!h)
        return;
    // The copy and rename handlers have always named their container without "Form "; their
    // error texts keep it so.
    const bool bare =
        objectName == QLatin1String("mnuEditCopy") || objectName == QLatin1String("mnuEditRename");
    const QString container = bare ? QStringLiteral("frmMain") : QStringLiteral("Form frmMain");
    try {
        h();
    } catch (const VbError& e) {
        ReportDBError(e, objectName + QStringLiteral("_Click"), container);
    } catch (const std::exception& e) {
        ReportDBError(e, objectName + QStringLiteral("_Click"), container);
    }
}

void frmMain::mnuEditDelete_Click() {
    const QString name = selectedName();
    if (name.isEmpty() || !d->handlers.contains(QStringLiteral("mnuEditDelete")))
        return;
    if (MsgBox(QStringLiteral("Are you sure you want to delete '") + name + QStringLiteral("' ?"),
               vb::YesNo + vb::Question, QStringLiteral("Delete?")) != vb::Yes)
        return;
    runHandler(QStringLiteral("mnuEditDelete"));
    RefreshGrid();
}

// Enables each entry that can do something now: its window exists and, for record entries, a row
// of a category it applies to is selected.
void frmMain::updateMenuState() {
    const QString cat = category();
    const bool row = !selectedName().isEmpty();
    auto set = [this](const char* name, bool on) {
        if (QAction* a = d->actions.value(QLatin1String(name)))
            a->setEnabled(on);
    };
    auto has = [this](const char* name) { return d->handlers.contains(QLatin1String(name)); };
    for (const char* name : {"mnuFileBackupDB", "mnuFileRestoreDB", "mnuFileOptions", "mnuAddEquip",
                             "mnuAddComps", "mnuAddRawMaterial", "mnuAddItem", "mnuViewMaps",
                             "mnuPrintPrintFilteredList", "mnuHelpSubmitBug", "mnuHelpHelp", "mnuHelpReadMe"})
        set(name, has(name));
    const bool edits = CanEdit(cat);
    set("mnuEditEditItem", row && edits);
    set("mnuPopupEditItem", row && edits);
    set("mnuPopupView", row);
    set("mnuEditDelete", row && has("mnuEditDelete"));
    set("mnuPopupDelete", row && has("mnuEditDelete"));
    // Copy and rename stay reachable for every category with a row, so that the categories they do
    // not support get their explanation instead of a silent grey entry.
    const bool copy = row && (has("mnuEditCopy") || !copyable(cat));
    const bool rename = row && (has("mnuEditRename") || !copyable(cat));
    set("mnuEditCopy", copy);
    set("mnuPopupCopy", copy);
    set("mnuEditRename", rename);
    set("mnuPopupRename", rename);
    const bool build =
        row && (cat == listcat::Equipment || cat == listcat::Components || cat == listcat::RawMaterials);
    set("mnuViewBuidView", build);
    set("mnuPopupBuildview", build);
    const bool rows = d->model->rowCount() > 0;
    set("mnuEditFind", rows);
    set("mnuPopupFind", rows);
}

// Copy and rename share one refusal box, under the rename title for both.
void frmMain::copyOrRename(const QString& entry, const QString& verb) {
    const QString cat = category();
    if (copyable(cat)) {
        runHandler(entry);
        return;
    }
    MsgBox(QStringLiteral("Sorry Support for ") + verb + u' ' + cat +
               QStringLiteral(" has not been implemented."),
           vb::Critical, QStringLiteral("Can Not Rename"));
}

void frmMain::mnuEditCopy_Click() {
    copyOrRename(QStringLiteral("mnuEditCopy"), QStringLiteral("Copying"));
}

void frmMain::mnuEditRename_Click() {
    copyOrRename(QStringLiteral("mnuEditRename"), QStringLiteral("Renaming"));
}

void frmMain::mnuEditFind_Click() {
    if (!d->find) {
        d->find = new frmFind(lstItems, d->model, d, this);
        d->find->setAttribute(Qt::WA_DeleteOnClose);
    }
    d->find->show();
    d->find->raise();
    d->find->activateWindow();
}

void frmMain::openUrlOf(const QString& section) {
    const QString address = ReadVoskIni(section, QStringLiteral("URL")).trimmed();
    const QUrl url(address);
    if (address.isEmpty() || !url.isValid()) {
        MsgBox(QStringLiteral("No address is set for this link. Add it under [") + section +
                   QStringLiteral("] URL= in VOSK.ini."),
               vb::Information);
        return;
    }
    if (!urlOpener()(url))
        MsgBox(QStringLiteral("The address ") + address + QStringLiteral(" could not be opened."),
               vb::Information);
}

void frmMain::mnuHelpForum_Click() {
    openUrlOf(QStringLiteral("FORUM"));
}

void frmMain::mnuHelpWebsite_Click() {
    openUrlOf(QStringLiteral("ZEL"));
}

void frmMain::mnuHelpAbout_Click() {
    if (d->handlers.contains(QStringLiteral("mnuHelpAbout"))) {
        runHandler(QStringLiteral("mnuHelpAbout"));
        return;
    }
    MsgBox(windowTitle() +
               QStringLiteral("\r\n\r\nA database of the equipment, components, raw materials, items, "
                              "MOBs and stations of Velmora.\r\n\r\nBuilt with Qt ") +
               QLatin1String(qVersion()) + QStringLiteral(" and SQLite."),
           vb::Information, QStringLiteral("About VOSK"));
}
