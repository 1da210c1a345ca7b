// The shopping list's commands: menus and pop-up menu, opening records, the build-or-buy choice per
// line, and the exports (clipboard, CSV file, printer or PDF).
#include "planner/frmshoppinglist.h"

#include "core/printjob.h"
#include "core/prompt.h"
#include "data/errorreport.h"
#include "planner/shoppingexport.h"
#include "planner/shoppingmodels.h"
#include "views/openviews.h"
#include "views/printsheet.h"
#include "views/viewnav.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFileInfo>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPrinter>
#include <QSaveFile>
#include <QTabWidget>
#include <QTableView>
#include <QTextDocument>
#include <QTreeView>
#include <QVBoxLayout>

namespace {
const QString kForm = QStringLiteral("Form frmShoppingList");

QAction* entry(QMenu* menu, const char* name, const QString& caption, const QKeySequence& keys = {}) {
    QAction* a = menu->addAction(caption);
    a->setObjectName(QLatin1String(name));
    if (!keys.isEmpty())
        a->setShortcut(keys);
    return a;
}
} // namespace

void frmShoppingList::buildMenus() {
    auto* bar = new QMenuBar(this);
    QMenu* file = bar->addMenu(tr("&File"));
    connect(entry(file, "mnuFileCopy", tr("&Copy as Text"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C)),
            &QAction::triggered, this, &frmShoppingList::mnuCopyText_Click);
    connect(entry(file, "mnuFileSaveCsv", tr("&Save as CSV..."), QKeySequence::Save), &QAction::triggered,
            this, &frmShoppingList::mnuSaveCsv_Click);
    file->addSeparator();
    connect(entry(file, "mnuFilePrint", tr("&Print..."), QKeySequence::Print), &QAction::triggered, this,
            [this] { mnuPrint_Click(false); });
    connect(entry(file, "mnuFilePdf", tr("Save as P&DF...")), &QAction::triggered, this,
            [this] { mnuPrint_Click(true); });
    file->addSeparator();
    connect(entry(file, "mnuFileClose", tr("Cl&ose")), &QAction::triggered, this, &QWidget::close);

    QMenu* edit = bar->addMenu(tr("&Edit"));
    connect(entry(edit, "mnuEditAdd", tr("&Add a Target"), QKeySequence(Qt::CTRL | Qt::Key_F)),
            &QAction::triggered, this, [this] {
                txtAddTarget->setFocus(Qt::ShortcutFocusReason);
                txtAddTarget->selectAll();
            });
    QAction* remove = entry(edit, "mnuEditRemove", tr("&Remove Target"));
    connect(remove, &QAction::triggered, this, &frmShoppingList::cmdRemove_Click);
    connect(entry(edit, "mnuEditClear", tr("C&lear Targets")), &QAction::triggered, this,
            &frmShoppingList::cmdClear_Click);
    edit->addSeparator();
    connect(entry(edit, "mnuEditRefresh", tr("Re&fresh"), QKeySequence::Refresh), &QAction::triggered, this,
            &frmShoppingList::refreshList);
    // Delete removes the target chosen in the table.
    auto* del = new QAction(tblTargets);
    del->setShortcut(QKeySequence::Delete);
    del->setShortcutContext(Qt::WidgetShortcut);
    tblTargets->addAction(del);
    connect(del, &QAction::triggered, this, &frmShoppingList::cmdRemove_Click);
    layout()->setMenuBar(bar);

    m_popup = new QMenu(this);
    m_popup->setObjectName(QStringLiteral("mnuPopup"));
    QAction* open = entry(m_popup, "mnuPopupView", tr("&Detailed View"));
    QAction* build = entry(m_popup, "mnuPopupBuildview", tr("&Build View"));
    m_popup->addSeparator();
    QAction* makeIt = entry(m_popup, "mnuPopupBuildIt", tr("Build &It Here"));
    QAction* obtainIt = entry(m_popup, "mnuPopupObtainIt", tr("&Obtain It As It Is"));
    QAction* asRule = entry(m_popup, "mnuPopupAsRule", tr("As the &Rule Says"));
    m_popup->addSeparator();
    QAction* target = entry(m_popup, "mnuPopupAddTarget", tr("Add as a &Target"));
    connect(open, &QAction::triggered, this, [this] { openCurrent(false); });
    connect(build, &QAction::triggered, this, [this] { openCurrent(true); });
    connect(makeIt, &QAction::triggered, this, [this] { chooseCurrent(true); });
    connect(obtainIt, &QAction::triggered, this, [this] { chooseCurrent(false); });
    connect(asRule, &QAction::triggered, this, [this] { chooseCurrent(std::nullopt); });
    connect(target, &QAction::triggered, this, [this] {
        const bom::Ref ref = currentRef();
        if (!ref.name.isEmpty())
            addTarget(ref);
    });
    auto popupAt = [this, makeIt, obtainIt, asRule, build](QTreeView* view, const QPoint& pos) {
        const QModelIndex at = view->indexAt(pos);
        if (!at.isValid())
            return;
        view->setCurrentIndex(at);
        const bom::Ref ref = currentRef();
        if (ref.name.isEmpty())
            return;
        const int i = m_session.book().indexOf(ref);
        const bool hasRecipe = i >= 0 && m_session.book().at(i).hasRecipe();
        const std::optional<bool> chosen = m_session.choice(ref);
        makeIt->setEnabled(hasRecipe && chosen != std::optional<bool>(true));
        obtainIt->setEnabled(hasRecipe && chosen != std::optional<bool>(false));
        asRule->setEnabled(chosen.has_value());
        build->setEnabled(ref.kind != bom::Kind::Item);
        m_popup->popup(view->viewport()->mapToGlobal(pos));
    };
    connect(lstShopping, &QWidget::customContextMenuRequested, this,
            [this, popupAt](const QPoint& pos) { popupAt(lstShopping, pos); });
    connect(treExpansion, &QWidget::customContextMenuRequested, this,
            [this, popupAt](const QPoint& pos) { popupAt(treExpansion, pos); });
}

bom::Ref frmShoppingList::currentRef() const {
    if (tabShopping->currentWidget() == treExpansion) {
        auto* model = static_cast<planner::ExpansionTreeModel*>(treExpansion->model());
        if (const bom::TreeNode* n = model->node(treExpansion->currentIndex()))
            return model->book().at(n->record).ref();
        return {};
    }
    const auto* model = static_cast<const planner::ShoppingListModel*>(lstShopping->model());
    const planner::ShoppingLine* l = model->line(lstShopping->currentIndex());
    return l ? l->ref : bom::Ref{};
}

void frmShoppingList::openCurrent(bool buildView) {
    const bom::Ref ref = currentRef();
    if (ref.name.isEmpty())
        return;
    try {
        if (buildView) {
            if (ref.kind != bom::Kind::Item)
                ShowBuildView(ref.name, bom::categoryOf(ref.kind));
        } else {
            OpenRecord(bom::kindWord(ref.kind), ref.name);
        }
    } catch (const VbError& e) {
        ReportDBError(
            e, buildView ? QStringLiteral("mnuPopupBuildview_Click") : QStringLiteral("lstShopping_DblClick"),
            kForm);
    }
}

void frmShoppingList::chooseCurrent(std::optional<bool> build) {
    const bom::Ref ref = currentRef();
    if (ref.name.isEmpty())
        return;
    m_session.setChoice(ref, build);
    targetsChanged();
    const QModelIndex again = static_cast<planner::ShoppingListModel*>(lstShopping->model())->indexOf(ref);
    if (again.isValid())
        lstShopping->setCurrentIndex(again);
}

QString frmShoppingList::listText() const {
    return planner::ShoppingListText(m_session.list(), m_session.title());
}

QString frmShoppingList::listCsv() const {
    return planner::ShoppingListCsv(m_session.list());
}

QString frmShoppingList::listHtml() const {
    return planner::ShoppingListHtml(m_session.list(), m_session.title());
}

void frmShoppingList::mnuCopyText_Click() {
    QApplication::clipboard()->setText(listText());
}

void frmShoppingList::mnuSaveCsv_Click() {
    QString proposed = printjob::proposedPdfName(windowTitle());
    proposed.chop(4); // ".pdf"
    QString file = prompts().saveFile(tr("Save Shopping List"), QStringLiteral("CSV Files (*.csv)|*.csv"),
                                      proposed + QStringLiteral(".csv"));
    if (file.isEmpty())
        return;
    if (QFileInfo(file).suffix().isEmpty())
        file += QStringLiteral(".csv");
    // A spreadsheet reads the names right only when the file says it is UTF-8.
    QSaveFile out(file);
    const QByteArray bytes = QByteArray("\xEF\xBB\xBF") + listCsv().toUtf8();
    if (!out.open(QIODevice::WriteOnly) || out.write(bytes) != bytes.size() || !out.commit())
        MsgBox(tr("The shopping list could not be saved to '%1': %2").arg(file, out.errorString()),
               vb::OKOnly + vb::Exclamation, tr("Save Shopping List"));
}

void frmShoppingList::mnuPrint_Click(bool toPdf) {
    PrintShoppingList(windowTitle(), listHtml(), this, toPdf);
}

void PrintShoppingList(const QString& title, const QString& html, QWidget* parent, bool toPdf) {
    if (!toPdf) {
        PrintHtml(title, html, parent);
        return;
    }
    // The shared print path writes a PDF only where no printer is installed; this one is asked for.
    QString file =
        prompts().saveFile(QObject::tr("Save Shopping List as PDF"),
                           QStringLiteral("PDF Files (*.pdf)|*.pdf"), printjob::proposedPdfName(title));
    if (file.isEmpty())
        return;
    if (QFileInfo(file).suffix().isEmpty())
        file += QStringLiteral(".pdf");
    QTextDocument doc;
    doc.setHtml(html);
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(file);
    printer.setDocName(title);
    printer.setCreator(appTitle());
    doc.print(&printer);
    if (!QFileInfo::exists(file))
        MsgBox(QObject::tr("The shopping list could not be saved to '%1'.").arg(file),
               vb::OKOnly + vb::Exclamation, QObject::tr("Save Shopping List as PDF"));
}
