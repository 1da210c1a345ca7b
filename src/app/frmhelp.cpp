#include "app/frmhelp.h"

#include "core/childwindows.h"
#include "core/programfolder.h"
#include "core/prompt.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QPushButton>
#include <QTextBrowser>
#include <QVBoxLayout>

frmHelp::frmHelp(const QString& caption, const QUrl& home, QWidget* parent) : QWidget(parent), m_home(home) {
    setObjectName(QStringLiteral("frmHelp"));
    setWindowTitle(caption);
    setWindowFlag(Qt::Window);
    setAttribute(Qt::WA_DeleteOnClose);
    auto* column = new QVBoxLayout(this);
    auto* bar = new QHBoxLayout;
    auto button = [&](QPushButton*& b, const QString& text, const char* name) {
        b = new QPushButton(text, this);
        b->setObjectName(QLatin1String(name));
        b->setAutoDefault(false);
        bar->addWidget(b);
    };
    button(cmdContents, tr("C&ontents"), "cmdContents");
    button(cmdBack, tr("< &Back"), "cmdBack");
    button(cmdForward, tr("&Forward >"), "cmdForward");
    bar->addStretch(1);
    button(cmdClose, tr("&Close"), "cmdClose");
    column->addLayout(bar);
    txtPage = new QTextBrowser(this);
    txtPage->setObjectName(QStringLiteral("txtPage"));
    // Links to other pages of the guide open here; addresses on the web in the browser.
    txtPage->setOpenLinks(false);
    column->addWidget(txtPage, 1);
    cmdBack->setEnabled(false);
    cmdForward->setEnabled(false);

    connect(txtPage, &QTextBrowser::anchorClicked, this, [this](const QUrl& link) {
        const QUrl target = txtPage->source().resolved(link);
        if (target.isLocalFile() || target.scheme().isEmpty())
            txtPage->setSource(target);
        else
            QDesktopServices::openUrl(target);
    });
    connect(txtPage, &QTextBrowser::backwardAvailable, cmdBack, &QPushButton::setEnabled);
    connect(txtPage, &QTextBrowser::forwardAvailable, cmdForward, &QPushButton::setEnabled);
    connect(cmdBack, &QPushButton::clicked, txtPage, &QTextBrowser::backward);
    connect(cmdForward, &QPushButton::clicked, txtPage, &QTextBrowser::forward);
    connect(cmdContents, &QPushButton::clicked, this, [this] { txtPage->setSource(m_home); });
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);
    txtPage->setSource(home);
    resize(780, 720);
}

QString HelpIndexPath() {
    return programFolder() + QStringLiteral("/help/index.html");
}

QString ReadMePath() {
    return programFolder() + QStringLiteral("/README.md");
}

bool ShowHelpFile(const QString& path, const QString& caption) {
    if (!QFileInfo::exists(path)) {
        MsgBox(QStringLiteral("The file ") + QDir::toNativeSeparators(path) +
                   QStringLiteral(" is missing. Please install VOSK again to restore it."),
               vb::Exclamation, caption);
        return false;
    }
    if (CheckWindow(caption))
        return true;
    auto* w = new frmHelp(caption, QUrl::fromLocalFile(path), OwnerWindow());
    RegisterChildWindow(w);
    w->show();
    return true;
}
