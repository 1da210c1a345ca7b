#include "bugreport/frmbugsubmissions.h"

#include "bugreport/smtpmail.h"
#include "core/childwindows.h"
#include "core/clock.h"
#include "core/inifile.h"
#include "core/progress.h"
#include "core/prompt.h"
#include "core/settings.h"
#include "core/vberror.h"
#include "data/errorreport.h"

#include <QComboBox>
#include <QEventLoop>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QThread>
#include <QTimer>
#include <QVBoxLayout>

namespace {
const QString Container = QStringLiteral("Form frmBugSubmissions");
const QString Remembered = QStringLiteral("BugSubmission");
const QString CrLf = QStringLiteral("\r\n");

QString caption(const char* key, const QString& fallback) {
    const QString text = ReadVoskIni(QStringLiteral("SUBMIT_BUG"), QLatin1String(key));
    return text.isEmpty() ? fallback : text;
}

QLineEdit* factBox(QWidget* parent, const char* name) {
    auto* box = new QLineEdit(parent);
    box->setObjectName(QLatin1String(name));
    box->setReadOnly(true);
    return box;
}

// Sends off the window thread so that the progress window keeps drawing and Cancel keeps working.
MailResult sendWithProgress(const BugMailSettings& server, const MailMessage& mail, Progress& progress) {
    std::atomic_bool cancel{false};
    std::atomic<qint64> sent{0}, total{0};
    MailResult result;
    progress.setRange(100);
    progress.setText(QStringLiteral("Connecting to ") + server.server + u':' + QString::number(server.port));
    std::unique_ptr<QThread> worker(QThread::create([&] {
        result = SendMail(
            server, mail,
            [&](qint64 s, qint64 t) {
                sent = s;
                total = t;
            },
            &cancel);
    }));
    QEventLoop loop;
    QTimer tick;
    bool sending = false;
    QObject::connect(worker.get(), &QThread::finished, &loop, &QEventLoop::quit);
    QObject::connect(&tick, &QTimer::timeout, &loop, [&] {
        if (progress.wasCancelled())
            cancel = true;
        if (sent > 0 && !sending) {
            sending = true;
            progress.setText(QStringLiteral("Sending the report"));
        }
        progress.setValue(total > 0 ? 10 + 85 * sent / total : 5);
    });
    worker->start();
    tick.start(50);
    loop.exec();
    worker->wait();
    progress.setValue(100);
    if (cancel)
        result.number = -1;
    return result;
}
} // namespace

frmBugSubmissions::frmBugSubmissions(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("frmBugSubmissions"));
    setWindowTitle(QStringLiteral("Submit a Bug"));
    setWindowFlag(Qt::Window);
    setAttribute(Qt::WA_DeleteOnClose);

    auto* column = new QVBoxLayout(this);
    auto* form = new QFormLayout;
    auto label = [this](QLabel*& l, const char* name) {
        l = new QLabel(this);
        l->setObjectName(QLatin1String(name));
        return l;
    };
    txtName = new QLineEdit(this);
    txtName->setObjectName(QStringLiteral("txtName"));
    txtEMail = new QLineEdit(this);
    txtEMail->setObjectName(QStringLiteral("txtEMail"));
    cmbType = new QComboBox(this);
    cmbType->setObjectName(QStringLiteral("cmbType"));
    cmbType->addItems(BugSeverities());
    form->addRow(label(lblName, "lblName"), txtName);
    form->addRow(label(lblEMail, "lblEMail"), txtEMail);
    form->addRow(label(lblType, "lblType"), cmbType);
    column->addLayout(form);

    column->addWidget(label(lblDescription, "lblDescription"));
    lblDescription->setWordWrap(true);
    txtDescription = new QPlainTextEdit(this);
    txtDescription->setObjectName(QStringLiteral("txtDescription"));
    txtDescription->setTabChangesFocus(true);
    column->addWidget(txtDescription, 2);
    column->addWidget(new QLabel(tr("Steps to make it happen again:"), this));
    txtStepsToRecreate = new QPlainTextEdit(this);
    txtStepsToRecreate->setObjectName(QStringLiteral("txtStepsToRecreate"));
    txtStepsToRecreate->setTabChangesFocus(true);
    column->addWidget(txtStepsToRecreate, 1);
    auto* codes = new QFormLayout;
    txtErrorCodes = new QLineEdit(this);
    txtErrorCodes->setObjectName(QStringLiteral("txtErrorCodes"));
    codes->addRow(tr("Error codes:"), txtErrorCodes);
    column->addLayout(codes);

    auto* facts = new QGroupBox(tr("Your system (sent with the report)"), this);
    auto* factsForm = new QFormLayout(facts);
    txtOSInfo = factBox(facts, "txtOSInfo");
    txtCPU = factBox(facts, "txtCPU");
    txtRAM = factBox(facts, "txtRAM");
    txtFreeMem = factBox(facts, "txtFreeMem");
    txtADOVer = factBox(facts, "txtADOVer");
    factsForm->addRow(tr("Operating system:"), txtOSInfo);
    factsForm->addRow(tr("Processor:"), txtCPU);
    factsForm->addRow(tr("Memory:"), txtRAM);
    factsForm->addRow(tr("Free memory:"), txtFreeMem);
    factsForm->addRow(tr("Database engine:"), txtADOVer);
    column->addWidget(facts);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    cmdSend = new QPushButton(this);
    cmdSend->setObjectName(QStringLiteral("cmdSend"));
    cmdSend->setDefault(true);
    cmdCancel = new QPushButton(this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    buttons->addWidget(cmdSend);
    buttons->addWidget(cmdCancel);
    column->addLayout(buttons);
    resize(560, 640);

    connect(cmdSend, &QPushButton::clicked, this, [this] { cmdSend_Click(); });
    connect(cmdCancel, &QPushButton::clicked, this, &QWidget::close);
    Form_Load();
}

frmBugSubmissions::~frmBugSubmissions() {
    SaveSetting(Remembered, QStringLiteral("Name"), txtName->text());
    SaveSetting(Remembered, QStringLiteral("EMail"), txtEMail->text());
}

void frmBugSubmissions::Form_Load() {
    try {
        lblDescription->setText(caption("DESC", tr("What happened:")));
        lblEMail->setText(caption("EMAIL", tr("E-mail:")));
        lblName->setText(caption("NAME", tr("Name:")));
        cmdCancel->setText(caption("CANCEL", tr("&Cancel")));
        cmdSend->setText(caption("SEND", tr("&Send")));
        lblType->setText(caption("TYPE", tr("Type:")));
        txtName->setText(GetSetting(Remembered, QStringLiteral("Name")));
        txtEMail->setText(GetSetting(Remembered, QStringLiteral("EMail")));
        const SystemFacts f = GatherSystemFacts();
        txtOSInfo->setText(f.os);
        txtCPU->setText(f.cpu);
        txtRAM->setText(f.totalMemory);
        txtFreeMem->setText(f.freeMemory);
        txtADOVer->setText(f.databaseVersion);
        for (QLineEdit* box : {txtOSInfo, txtCPU, txtRAM, txtFreeMem, txtADOVer})
            box->setCursorPosition(0);
    } catch (const std::exception& e) {
        ReportDBError(e, QStringLiteral("Form_Load"), Container);
    }
}

BugReport frmBugSubmissions::report() const {
    BugReport r;
    r.name = txtName->text();
    r.email = txtEMail->text();
    r.severity = cmbType->currentText();
    r.description = txtDescription->toPlainText();
    r.steps = txtStepsToRecreate->toPlainText();
    r.errorCodes = txtErrorCodes->text();
    r.facts = {txtOSInfo->text(), txtCPU->text(), txtRAM->text(), txtFreeMem->text(), txtADOVer->text()};
    return r;
}

void frmBugSubmissions::cmdSend_Click() {
    try {
        const BugReport r = report();
        if (const auto refusal = CheckBugReport(r)) {
            MsgBox(refusal->text, refusal->style, refusal->title);
            if (auto* field = findChild<QWidget*>(refusal->field))
                field->setFocus();
            return;
        }
        const BugMailSettings server = ReadBugMailSettings();
        if (!server.complete()) {
            MsgBox(QStringLiteral("No mail server is set up for bug reports. Add SERVER, PORT and RECIPIENT "
                                  "under [BUG_REPORT] in VOSK.ini."),
                   vb::Exclamation);
            return;
        }
        MailResult result;
        {
            std::unique_ptr<Progress> progress =
                StartProgress(QStringLiteral("Sending Bug Submission"), true);
            const QString installation = InstallationId();
            MailMessage mail{r.email, server.recipient, BugSubject(installation),
                             BugBody(r, installation, Now().date()), Now()};
            result = sendWithProgress(server, mail, *progress);
        }
        if (result.ok) {
            MsgBox(QStringLiteral("Bug Submission Successful!"), vb::Information, QStringLiteral("Success!"));
            close();
        } else if (result.number != -1) {
            MsgBox(QStringLiteral("Error: ") + QString::number(result.number) + CrLf +
                   QStringLiteral("Description: ") + result.description);
        }
    } catch (const std::exception& e) {
        ReportDBError(e, QStringLiteral("cmdSend_Click"), Container);
    }
}

frmBugSubmissions* OpenBugSubmissions(const QString& description, const QString& number) {
    static QPointer<frmBugSubmissions> open;
    if (!open) {
        open = new frmBugSubmissions(OwnerWindow());
        RegisterChildWindow(open);
    }
    if (!description.isEmpty() && open->txtDescription->toPlainText().isEmpty()) {
        open->txtDescription->setPlainText(description);
        open->txtErrorCodes->setText(number);
    }
    open->show();
    open->raise();
    open->activateWindow();
    return open;
}
