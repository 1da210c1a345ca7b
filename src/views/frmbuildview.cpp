#include "views/frmbuildview.h"

#include "core/childwindows.h"
#include "data/errorreport.h"
#include "views/openviews.h"
#include "views/printsheet.h"
#include "views/shoppinghook.h"
#include "views/viewnav.h"
#include "views/viewwidgets.h"

#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {
const QString kForm = QStringLiteral("Form frmBuildView");
}

frmBuildView::frmBuildView(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("frmBuildView"));
    PrepareViewWindow(this);
    auto* col = new QVBoxLayout(this);
    col->setContentsMargins(0, 0, 0, 0);
    auto* bar = new QMenuBar(this);
    QMenu* file = bar->addMenu(QStringLiteral("&File"));
    file->setObjectName(QStringLiteral("mnuFile"));
    QAction* print = file->addAction(QStringLiteral("&Print"));
    print->setObjectName(QStringLiteral("mnuFilePrint"));
    file->addSeparator();
    QAction* close = file->addAction(QStringLiteral("&Close"));
    close->setObjectName(QStringLiteral("mnuFileClose"));
    QMenu* edit = bar->addMenu(QStringLiteral("&Edit"));
    edit->setObjectName(QStringLiteral("mnuEdit"));
    QAction* copy = edit->addAction(QStringLiteral("&Copy to Clipboard"));
    copy->setObjectName(QStringLiteral("mnuEditCopy"));
    copy->setShortcut(QKeySequence::Copy);
    QAction* addToList = edit->addAction(QStringLiteral("Add to &Shopping List"));
    addToList->setObjectName(QStringLiteral("mnuEditAddToList"));
    addToList->setVisible(shoppingListAdder() != nullptr);
    connect(addToList, &QAction::triggered, this, [this] {
        if (ShoppingListAdder add = shoppingListAdder(); add && !m_root.isEmpty())
            add(m_kind, m_root);
    });
    col->setMenuBar(bar);

    treBuildView = NewTree(this, QStringLiteral("treBuildView"));
    col->addWidget(treBuildView);
    m_nodes = new TreeWidgetSink(treBuildView, false);
    AttachBuildTreeCommands(treBuildView, QStringLiteral("treBuildView"), kForm);

    connect(print, &QAction::triggered, this, &frmBuildView::mnuFilePrint_Click);
    connect(close, &QAction::triggered, this, &QWidget::close);
    connect(copy, &QAction::triggered, this, &frmBuildView::mnuEditCopy_Click);
    resize(460, 520);
}

frmBuildView::~frmBuildView() {
    delete m_nodes;
}

void frmBuildView::build(const QString& name, const QString& kind) {
    m_root = name;
    m_kind = kind;
    m_nodes->clear();
    bool recurse = true;
    if (kind == QLatin1String("Raw Materials")) {
        m_nodes->addNode(QString(), name, name,
                         IsRefined(name) ? buildimg::RefinedRawMaterial : buildimg::RawMaterial);
        BuildRawMatTree(name, name, *m_nodes, recurse);
    } else if (kind == QLatin1String("Components")) {
        m_nodes->addNode(QString(), name, name, buildimg::Component);
        BuildCompTree(name, name, *m_nodes, recurse);
    } else {
        m_nodes->addNode(QString(), name, name, buildimg::Equipment);
        if (kind == QLatin1String("Equipment"))
            BuildEquipTree(name, name, *m_nodes, recurse);
    }
}

QString frmBuildView::clipboardText() const {
    return TreeWidgetClipboardText(m_nodes->itemsInOrder());
}

void frmBuildView::mnuEditCopy_Click() {
    QClipboard* clip = QApplication::clipboard();
    clip->clear();
    clip->setText(clipboardText());
}

void frmBuildView::mnuFilePrint_Click() {
    QString html =
        "<html><body><h2>" + windowTitle().toHtmlEscaped() + "</h2><p style=\"font-family: monospace;\">";
    for (QTreeWidgetItem* item : m_nodes->itemsInOrder()) {
        int depth = 0;
        for (QTreeWidgetItem* p = item->parent(); p; p = p->parent())
            ++depth;
        html += QString(depth * 4, QChar(0xA0)) + item->text(0).toHtmlEscaped() + "<br>";
    }
    PrintHtml(windowTitle(), html + "</p></body></html>", this);
}

void ShowBuildView(const QString& name, const QString& kind) {
    const QString caption = "Build View (" + name + ")";
    if (CheckWindow(caption))
        return;
    auto* frm = new frmBuildView(ViewOwner());
    frm->setWindowTitle(caption);
    RegisterChildWindow(frm);
    try {
        frm->build(name, kind);
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("ShowBuildView"), QStringLiteral("Module modMain"));
    } catch (const std::exception& e) {
        ReportDBError(e, QStringLiteral("ShowBuildView"), QStringLiteral("Module modMain"));
    }
    frm->show();
}
