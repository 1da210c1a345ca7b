#include "app/frmoptions.h"

#include "app/frmmain.h"
#include "core/gamecursor.h"
#include "core/prompt.h"
#include "core/settings.h"
#include "core/tooltip.h"
#include "data/database.h"
#include "data/errorreport.h"
#include "data/quotes.h"
#include "game/vlinterface.h"
#include "views/modmain.h"
#include "views/viewwidgets.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
const QString Container = QStringLiteral("Form frmOptions");
const QString CrLf = QStringLiteral("\r\n");

QPointer<clsVLInterface>& channelRef() {
    static QPointer<clsVLInterface> channel;
    return channel;
}

QString captionOf(const QLineEdit* box) {
    return box->text();
}

bool blank(const QString& caption) {
    return caption.trimmed().isEmpty();
}

// The mark-up is kept as the factor prices are multiplied by ("1.155"); the window shows percent.
double markupPercent() {
    bool ok = false;
    const double factor = opt::text(opt::Markup).trimmed().toDouble(&ok);
    return ok ? (factor - 1.0) * 100.0 : 0.0;
}
} // namespace

clsVLInterface* gameChannel() {
    return channelRef();
}

void setGameChannel(clsVLInterface* channel) {
    channelRef() = channel;
}

bool IsGameFolder(const QString& folder) {
    static const QString exe = QStringLiteral("v&l.exe");
    if (QFileInfo(folder + QLatin1Char('/') + exe).isFile())
        return true;
    const QStringList files = QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::System);
    for (const QString& f : files)
        if (f.compare(exe, Qt::CaseInsensitive) == 0)
            return true;
    return false;
}

frmOptions::frmOptions(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmOptions"));
    setWindowTitle(QStringLiteral("Options"));
    buildWidgets();
    LoadOptions();
    setToolTips();
}

frmOptions::~frmOptions() = default;

void frmOptions::buildWidgets() {
    auto* column = new QVBoxLayout(this);
    auto named = [](QWidget* w, const char* name) {
        w->setObjectName(QLatin1String(name));
        return w;
    };

    auto* custom = new QGroupBox(tr("Custom equipment fields"), this);
    auto* customForm = new QFormLayout(custom);
    chkCustomFieldsOn = new QCheckBox(tr("&Use custom fields"), custom);
    named(chkCustomFieldsOn, "chkCustomFieldsOn");
    customForm->addRow(chkCustomFieldsOn);
    QLineEdit** boxes[] = {&txtCF01, &txtCF02, &txtCF03};
    const char* names[] = {"txtCF01", "txtCF02", "txtCF03"};
    for (int i = 0; i < 3; ++i) {
        *boxes[i] = new QLineEdit(custom);
        named(*boxes[i], names[i]);
        (*boxes[i])->setMaxLength(50);
        customForm->addRow(tr("Field %1 caption:").arg(i + 1), *boxes[i]);
    }
    column->addWidget(custom);

    auto* game = new QGroupBox(tr("Game interaction"), this);
    auto* gameForm = new QFormLayout(game);
    chkInteractWithGame = new QCheckBox(tr("&Answer commands typed into the captain's log"), game);
    named(chkInteractWithGame, "chkInteractWithGame");
    gameForm->addRow(chkInteractWithGame);
    auto* folderRow = new QHBoxLayout;
    txtVLPath = new QLineEdit(game);
    named(txtVLPath, "txtVLPath");
    txtVLPath->setMinimumWidth(280);
    cmdSelectFolder = new QPushButton(tr("&Browse..."), game);
    named(cmdSelectFolder, "cmdSelectFolder");
    folderRow->addWidget(txtVLPath, 1);
    folderRow->addWidget(cmdSelectFolder);
    gameForm->addRow(tr("Velmora folder:"), folderRow);
    column->addWidget(game);

    auto* general = new QGroupBox(tr("General"), this);
    auto* generalForm = new QFormLayout(general);
    txtMarkup = new QDoubleSpinBox(general);
    named(txtMarkup, "txtMarkup");
    txtMarkup->setRange(-100.0, 1000.0);
    txtMarkup->setDecimals(2);
    txtMarkup->setSuffix(QStringLiteral(" %"));
    txtMarkup->setMaximumWidth(120);
    generalForm->addRow(tr("Price &mark-up:"), txtMarkup);
    cmbDblClick = new QComboBox(general);
    named(cmbDblClick, "cmbDblClick");
    cmbDblClick->addItem(tr("Opens the record's view"));   // dblclick::View
    cmbDblClick->addItem(tr("Opens the record's editor")); // dblclick::Editor
    generalForm->addRow(tr("&Double-click on a row:"), cmbDblClick);
    auto check = [&](QCheckBox*& box, const char* name, const QString& caption) {
        box = new QCheckBox(caption, general);
        named(box, name);
        generalForm->addRow(box);
    };
    check(chkToolTips, "chkToolTips", tr("Show &tooltips"));
    check(chkBackground, "chkBackground", tr("Show the back&ground picture in the list"));
    check(chkUseVLNCursor, "chkUseVLNCursor", tr("Use the game's mouse &cursor"));
    check(chkPreloadImages, "chkPreloadImages", tr("&Preload item pictures at start"));
    check(chkPrintPreview, "chkPrintPreview", tr("Pre&view before printing"));
    check(chkReportErrorMsgs, "chkReportErrorMsgs", tr("Offer a bug report after an &error"));
    column->addWidget(general);

    auto* buttons = new QHBoxLayout;
    cmdResetRegVals = new QPushButton(tr("&Reset Personal Settings..."), this);
    named(cmdResetRegVals, "cmdResetRegVals");
    cmdApply = new QPushButton(tr("Apply"), this);
    named(cmdApply, "cmdApply");
    cmdApply->setDefault(true);
    cmdCancel = new QPushButton(tr("Cancel"), this);
    named(cmdCancel, "cmdCancel");
    buttons->addWidget(cmdResetRegVals);
    buttons->addStretch(1);
    buttons->addWidget(cmdApply);
    buttons->addWidget(cmdCancel);
    column->addLayout(buttons);

    connect(chkInteractWithGame, &QCheckBox::clicked, this, [this] { chkInteractWithGame_Click(); });
    connect(cmdSelectFolder, &QPushButton::clicked, this, [this] { cmdSelectFolder_Click(); });
    connect(cmdApply, &QPushButton::clicked, this, [this] { cmdApply_Click(); });
    connect(cmdCancel, &QPushButton::clicked, this, [this] { cmdCancel_Click(); });
    connect(cmdResetRegVals, &QPushButton::clicked, this, [this] { cmdResetRegVals_Click(); });
}

void frmOptions::setToolTips() {
    const QList<QPair<QWidget*, const char*>> tips = {{txtMarkup, "MARKUP"},
                                                      {txtVLPath, "VLPATH"},
                                                      {cmdSelectFolder, "SELECT_FOLDER"},
                                                      {chkInteractWithGame, "CHK_INTERACTIVE"},
                                                      {cmdApply, "APPLY"},
                                                      {cmdCancel, "CANCEL"},
                                                      {chkCustomFieldsOn, "CUSTOM_FIELDS"},
                                                      {cmbDblClick, "DBLCLICK"},
                                                      {chkToolTips, "TOOLTIPS"},
                                                      {chkBackground, "BACKGROUND"},
                                                      {chkUseVLNCursor, "VLN_CURSOR"},
                                                      {chkPreloadImages, "PRELOAD"},
                                                      {chkPrintPreview, "PRINT_PREVIEW"},
                                                      {chkReportErrorMsgs, "REPORT_ERRORS"},
                                                      {cmdResetRegVals, "RESET"}};
    for (const auto& [widget, key] : tips)
        SetTip(widget, GetToolTip(QStringLiteral("Options"), QLatin1String(key), QString()));
}

void frmOptions::LoadOptions() {
    const CustomFields& custom = customFields();
    chkCustomFieldsOn->setChecked(custom.on);
    txtCF01->setText(custom.caption[0]);
    txtCF02->setText(custom.caption[1]);
    txtCF03->setText(custom.caption[2]);
    chkInteractWithGame->setChecked(opt::flag(opt::VLInteractOn));
    txtVLPath->setText(opt::text(opt::VLPath));
    txtMarkup->setValue(markupPercent());
    const long dbl = opt::number(opt::DoubleClickEvent);
    cmbDblClick->setCurrentIndex(dbl == dblclick::Editor ? dblclick::Editor : dblclick::View);
    chkReportErrorMsgs->setChecked(opt::flag(opt::ReportErrorMessages));
    chkToolTips->setChecked(opt::flag(opt::Tooltips));
    chkUseVLNCursor->setChecked(opt::flag(opt::DisplayVLNCursor));
    chkPreloadImages->setChecked(opt::flag(opt::PreloadImages));
    chkPrintPreview->setChecked(opt::flag(opt::PrintPreview));
    chkBackground->setChecked(opt::flag(opt::Background));
}

void frmOptions::chkInteractWithGame_Click() {
    if (!chkInteractWithGame->isChecked())
        return;
    const int answer =
        MsgBox(QStringLiteral("Enabling Game interaction will erase pages 950-999 of all captain logs.") +
                   CrLf + QStringLiteral("Are you sure you want to continue?"),
               vb::YesNo + vb::Question, QStringLiteral("Are you sure?"));
    if (answer == vb::No)
        chkInteractWithGame->setChecked(false);
}

void frmOptions::cmdSelectFolder_Click() {
    QString folder = prompts().chooseFolder(QStringLiteral("Please select your Velmora Folder"));
    if (folder.isEmpty())
        return;
    // One trailing separator goes, so that the test never looks for a doubled one.
    if (folder.endsWith(QLatin1Char('\\')) || folder.endsWith(QLatin1Char('/')))
        folder.chop(1);
    if (!IsGameFolder(folder)) {
        MsgBox(QStringLiteral(
                   "The folder you have selected does not appear to be a valid Velmora game folder.") +
               CrLf + QStringLiteral("Please select another folder."));
        chkInteractWithGame->setChecked(false);
        return;
    }
    txtVLPath->setText(folder);
}

bool frmOptions::saveDatabaseOptions(bool on, const QString (&captions)[3]) {
    try {
        db().beginTrans();
        try {
            db().execute(QStringLiteral("DELETE FROM DB_OPTIONS"));
            db().execute(QStringLiteral(
                             "INSERT INTO DB_OPTIONS (CUSTOM_FIELDS_ON, FIELD_01_CAPTION, FIELD_02_CAPTION, "
                             "FIELD_03_CAPTION) VALUES (") +
                         (on ? QStringLiteral("TRUE") : QStringLiteral("FALSE")) + QStringLiteral(", '") +
                         FixQuotes(captions[0]) + QStringLiteral("','") + FixQuotes(captions[1]) +
                         QStringLiteral("','") + FixQuotes(captions[2]) + QStringLiteral("')"));
            db().commitTrans();
        } catch (...) {
            const QList<ErrorRecord> records = db().errors();
            if (db().inTransaction())
                db().rollbackTrans();
            // The report describes the failed statement, not the roll-back.
            db().clearErrors();
            for (const ErrorRecord& r : records)
                db().addError(r);
            throw;
        }
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("cmdApply_Click"), Container);
        return false;
    } catch (const std::exception& e) {
        ReportDBError(e, QStringLiteral("cmdApply_Click"), Container);
        return false;
    }
    CustomFields fields;
    fields.on = on;
    for (int i = 0; i < 3; ++i)
        fields.caption[i] = captions[i];
    setCustomFields(fields);
    return true;
}

bool frmOptions::cmdApply_Click() {
    const bool customOn = chkCustomFieldsOn->isChecked();
    const QString captions[3] = {captionOf(txtCF01), captionOf(txtCF02), captionOf(txtCF03)};
    if (customOn && blank(captions[0])) {
        MsgBox(QStringLiteral(
                   "First Custom Field cannot be left blank. Please type something in for the first custom "
                   "field or uncheck the option"),
               vb::Exclamation, QStringLiteral("Invalid Entry"));
        return false;
    }
    if ((blank(captions[0]) && !blank(captions[1])) || (blank(captions[1]) && !blank(captions[2]))) {
        MsgBox(QStringLiteral("Please fill up the custom field names in order.") + CrLf +
                   QStringLiteral("IE: You may not use the third field without first using the first."),
               vb::Exclamation, QStringLiteral("Fill up custom fields in order."));
        return false;
    }

    // Game interaction: the folder is handed over first, so that switching on never writes into the
    // logs of the folder used before.
    const bool interact = chkInteractWithGame->isChecked();
    const QString folder = txtVLPath->text().trimmed();
    opt::saveFlag(opt::VLInteractOn, interact);
    if (clsVLInterface* channel = gameChannel()) {
        if (interact)
            channel->setVlNFolder(folder);
        channel->setInteractWithGame(interact);
    }
    frmMain* main = mainWindow();
    if (main)
        main->setInteractionPanel(interact);
    opt::save(opt::VLPath, folder);

    const CustomFields before = customFields();
    if (!saveDatabaseOptions(customOn, captions))
        return false;

    opt::saveFlag(opt::ReportErrorMessages, chkReportErrorMsgs->isChecked());
    opt::saveFlag(opt::Tooltips, chkToolTips->isChecked());
    RefreshTips();
    opt::save(opt::DoubleClickEvent, QString::number(cmbDblClick->currentIndex()));
    opt::saveFlag(opt::DisplayVLNCursor, chkUseVLNCursor->isChecked());
    ApplyGameCursor(chkUseVLNCursor->isChecked());
    opt::saveFlag(opt::PreloadImages, chkPreloadImages->isChecked());
    opt::saveFlag(opt::PrintPreview, chkPrintPreview->isChecked());
    opt::saveFlag(opt::Background, chkBackground->isChecked());
    opt::save(opt::Markup, QString::number(1.0 + txtMarkup->value() / 100.0, 'g', 10));
    if (main) {
        main->setBackgroundShown(chkBackground->isChecked());
        // New captions show in the list's columns at once.
        const CustomFields& now = customFields();
        bool changed = before.on != now.on;
        for (int i = 0; i < 3; ++i)
            changed = changed || before.caption[i] != now.caption[i];
        if (changed)
            main->RefreshGrid();
    }
    accept();
    return true;
}

void frmOptions::cmdResetRegVals_Click() {
    const int answer = MsgBox(QStringLiteral("Reseting personal settings cannot be undone.") + CrLf +
                                  QStringLiteral("Are you sure you want to reset?"),
                              vb::YesNo + vb::Question, QStringLiteral("Reset Values?"));
    if (answer != vb::Yes)
        return;
    if (!DeleteAllSettings()) {
        MsgBox(QStringLiteral("Reset of personal settings failed!"), vb::Information,
               QStringLiteral("Reset"));
        return;
    }
    // What the window shows is what the store now holds: the defaults of the next start.
    LoadOptions();
}

void frmOptions::cmdCancel_Click() {
    reject();
}
