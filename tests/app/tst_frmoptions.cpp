// The options window over the sample world in a temporary program folder: the checks of Apply, what it
// saves and shows at once, the game-interaction question, the folder chooser, Reset and Cancel.
#include "../game/gamefolder.h"
#include "viewsfixture.h"

#include "app/frmmain.h"
#include "app/frmoptions.h"
#include "core/gamecursor.h"
#include "core/inifile.h"
#include "core/programfolder.h"
#include "core/settings.h"
#include "core/tooltip.h"
#include "data/database.h"
#include "game/vlinterface.h"
#include "lists/listmodel.h"
#include "views/modmain.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QTest>
#include <QTreeView>

namespace {
const QString CrLf = QStringLiteral("\r\n");

// The one row of DB_OPTIONS: the flag ("1" or "0") and the three captions.
QStringList readDbOptions(ViewsFixture& f) {
    if (f.scalar("SELECT COUNT(*) FROM DB_OPTIONS").toInt() != 1)
        return {"not one row"};
    QStringList row = {f.scalar("SELECT CUSTOM_FIELDS_ON FROM DB_OPTIONS").toBool() ? "1" : "0"};
    for (const char* c : {"FIELD_01_CAPTION", "FIELD_02_CAPTION", "FIELD_03_CAPTION"})
        row << f.scalar(QString("SELECT %1 FROM DB_OPTIONS").arg(c)).toString();
    return row;
}

// The last box as title, style and text.
QStringList box(ScriptedPrompt& p) {
    return {p.last().title, QString::number(p.last().style), p.last().text};
}
} // namespace

class TestFrmOptions : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        QString error;
        QVERIFY2(m_fixture.setUp(true, &error), qPrintable(error));
        QVERIFY2(m_game.setUp(&error), qPrintable(error));
        QVERIFY(writeBytes(m_game.game() + "/V&L.EXE", "MZ"));
        qputenv("WINEPREFIX", QFile::encodeName(m_game.winePrefix()));
        QVERIFY(WriteIni(iniPath(), "Options", "MARKUP", "Your mark-up, now %%%."));
    }
    void cleanup() {
        m_main.reset();
        m_fixture.tearDown();
        qunsetenv("WINEPREFIX");
    }

    void applyChecksTheCustomCaptions_data() {
        QTest::addColumn<bool>("on");
        QTest::addColumn<QStringList>("captions");
        QTest::addColumn<QString>("refusal"); // the box's title; empty when saved
        const QString first = "Invalid Entry", order = "Fill up custom fields in order.";
        QTest::newRow("on, first empty") << true << QStringList{"", "", ""} << first;
        QTest::newRow("on, first only blanks") << true << QStringList{"   ", "", ""} << first;
        QTest::newRow("on, first and third without the second") << true << QStringList{"A", "", "C"} << order;
        QTest::newRow("off, out of order all the same") << false << QStringList{"", "B", ""} << order;
        QTest::newRow("on, all three, with a quote") << true << QStringList{"O'Brien's", "B", "C"} << "";
        QTest::newRow("off keeps the captions as typed") << false << QStringList{" X ", "Y", ""} << "";
    }
    void applyChecksTheCustomCaptions() {
        QFETCH(bool, on);
        QFETCH(QStringList, captions);
        QFETCH(QString, refusal);
        const QStringList before = readDbOptions(m_fixture);
        frmOptions w;
        w.chkCustomFieldsOn->setChecked(on);
        w.txtCF01->setText(captions[0]);
        w.txtCF02->setText(captions[1]);
        w.txtCF03->setText(captions[2]);
        w.chkToolTips->setChecked(false);
        const bool saved = w.cmdApply_Click();
        QCOMPARE(saved, refusal.isEmpty());
        if (!saved) {
            QCOMPARE(m_fixture.prompt().count(), 1);
            QCOMPARE(box(m_fixture.prompt()),
                     (QStringList{
                         refusal, "48",
                         refusal == "Invalid Entry"
                             ? QString("First Custom Field cannot be left blank. Please type something in "
                                       "for the first custom field or uncheck the option")
                             : "Please fill up the custom field names in order." + CrLf +
                                   "IE: You may not use the third field without first using the first."}));
            QCOMPARE(readDbOptions(m_fixture), before);
            QCOMPARE(opt::text(opt::Tooltips), QString("True")); // nothing saved
            QCOMPARE(opt::text(opt::VLInteractOn), QString("False"));
            QCOMPARE(w.result(), int(QDialog::Rejected));
            return;
        }
        QCOMPARE(m_fixture.prompt().count(), 0);
        QCOMPARE(readDbOptions(m_fixture), QStringList(on ? "1" : "0") + captions);
        QCOMPARE(customFields().on, on);
        QCOMPARE(customFields().caption[0], captions[0]);
        QCOMPARE(FormatFieldName("CUSTOM_02"), captions[1].isEmpty() ? QString() : ProperCase(captions[1]));
        QCOMPARE(opt::text(opt::Tooltips), QString("False"));
        QCOMPARE(w.result(), int(QDialog::Accepted));
    }
    void applySavesEverythingAndShowsItAtOnce() {
        QVERIFY(WriteIni(iniPath(), "Main", "EQUIPMENT_LIST", "The records."));
        m_main = std::make_unique<frmMain>();
        QVERIFY(gameChannel());
        QCOMPARE(gameChannel()->timerInterval(), 0);
        auto columnOf = [this](const char* name) { return m_main->model()->columnIndex(name); };
        QVERIFY(columnOf("CUSTOM_01") < 0); // the sample world does not use custom fields
        QVERIFY(GameCursorShown());         // the game's pointer is on by default

        frmOptions w;
        QCOMPARE(w.windowTitle(), QString("Options"));
        QVERIFY(w.txtMarkup->toolTip().contains("now 0%."));
        w.chkCustomFieldsOn->setChecked(true);
        w.txtCF01->setText("Where Seen");
        w.chkInteractWithGame->setChecked(true);
        w.txtVLPath->setText(m_game.game());
        w.txtMarkup->setValue(15.5);
        w.cmbDblClick->setCurrentIndex(dblclick::Editor);
        for (QCheckBox* box : {w.chkReportErrorMsgs, w.chkToolTips, w.chkUseVLNCursor, w.chkPreloadImages,
                               w.chkPrintPreview, w.chkBackground})
            box->setChecked(!box->isChecked());
        QVERIFY(w.cmdApply_Click());
        QCOMPARE(m_fixture.prompt().count(), 0);

        const QList<QPair<opt::Option, QString>> saved = {
            {opt::VLInteractOn, "True"},      {opt::VLPath, m_game.game()},       {opt::Markup, "1.155"},
            {opt::DoubleClickEvent, "1"},     {opt::ReportErrorMessages, "True"}, {opt::Tooltips, "False"},
            {opt::DisplayVLNCursor, "False"}, {opt::PreloadImages, "True"},       {opt::PrintPreview, "True"},
            {opt::Background, "False"}};
        for (const auto& [option, value] : saved)
            QCOMPARE(QSettings(QSettings::NativeFormat, QSettings::UserScope, "VOSK", "VOSK")
                         .value(QString("Options/") + option.key)
                         .toString(),
                     value);
        // At once: the status panel, the background, the channel and the list's custom column.
        QCOMPARE(m_main->panelText("Interaction"), QString("Game Interaction: Enabled"));
        QVERIFY(!m_main->backgroundShown());
        QVERIFY(!GameCursorShown() && m_main->cursor().shape() == Qt::ArrowCursor);
        QVERIFY(m_main->lstItems->toolTip().isEmpty()); // tips off in the windows already open too
        QCOMPARE(gameChannel()->timerInterval(), 250);
        QCOMPARE(gameChannel()->logStems(), GameFolder::stems());
        const int custom = columnOf("CUSTOM_01");
        QVERIFY(custom >= 0);
        QCOMPARE(m_main->model()->headerData(custom, Qt::Horizontal).toString(), QString("Where Seen"));
        QVERIFY(!m_main->lstItems->isColumnHidden(custom));
        QVERIFY(m_main->lstItems->isColumnHidden(columnOf("CUSTOM_02")));
        QCOMPARE(GetToolTip("Options", "MARKUP", ""), QString("Your mark-up, now 15.5%."));

        // The options persist: a new window shows them as saved.
        frmOptions again;
        QCOMPARE(again.txtMarkup->value(), 15.5);
        QCOMPARE(again.cmbDblClick->currentIndex(), int(dblclick::Editor));
        QVERIFY(again.chkInteractWithGame->isChecked() && !again.chkToolTips->isChecked());
        QCOMPARE(again.txtVLPath->text(), m_game.game());
        QVERIFY(again.txtMarkup->toolTip().isEmpty()); // tooltips are off now

        // Switching off stops the channel; the panel follows. The game's pointer comes back on every window.
        again.chkInteractWithGame->setChecked(false);
        again.chkUseVLNCursor->setChecked(true);
        QVERIFY(again.cmdApply_Click());
        QCOMPARE(m_main->cursor().shape(), Qt::BitmapCursor);
        again.chkToolTips->setChecked(true);
        QVERIFY(again.cmdApply_Click());
        QCOMPARE(TipText(m_main->lstItems), QString("The records."));
        QCOMPARE(gameChannel()->timerInterval(), 0);
        QCOMPARE(m_main->panelText("Interaction"), QString("Game Interaction: Disabled"));
        m_main.reset();
        QVERIFY(!gameChannel());
    }
    void failedDatabaseWriteSavesNoCaptions() {
        QString error;
        QVERIFY2(m_fixture.exec({"DROP TABLE DB_OPTIONS"}, &error), qPrintable(error));
        frmOptions w;
        w.chkCustomFieldsOn->setChecked(true);
        w.txtCF01->setText("Lost");
        w.chkPrintPreview->setChecked(true);
        QVERIFY(!w.cmdApply_Click());
        QCOMPARE(m_fixture.prompt().count(), 1);
        QVERIFY2(m_fixture.prompt().last().text.contains("in procedure cmdApply_Click of Form frmOptions"),
                 qPrintable(m_fixture.prompt().last().text));
        QVERIFY(!db().inTransaction());
        QVERIFY(!customFields().on);
        QCOMPARE(opt::text(opt::PrintPreview), QString("False")); // the options after it are not saved
        QVERIFY(QFile(errorLogPath()).size() > 0);
    }
    void interactionQuestionAndFolderChooser() {
        frmOptions w;
        ScriptedPrompt& p = m_fixture.prompt();
        p.queueButton(vb::No);
        w.chkInteractWithGame->click();
        QVERIFY(!w.chkInteractWithGame->isChecked());
        QCOMPARE(box(p),
                 (QStringList{"Are you sure?", "36",
                              "Enabling Game interaction will erase pages 950-999 of all captain logs." +
                                  CrLf + "Are you sure you want to continue?"}));
        p.queueButton(vb::Yes);
        w.chkInteractWithGame->click();
        QVERIFY(w.chkInteractWithGame->isChecked());
        w.chkInteractWithGame->click(); // unticking asks nothing
        QCOMPARE(p.count(), 2);

        // A chosen folder loses one trailing separator; the game executable may be in any case.
        w.chkInteractWithGame->setChecked(true);
        p.queueText(m_game.game() + "/");
        w.cmdSelectFolder->click();
        QCOMPARE(p.last().kind, ScriptedPrompt::Kind::ChooseFolder);
        QCOMPARE(p.last().text, QString("Please select your Velmora Folder"));
        QCOMPARE(w.txtVLPath->text(), m_game.game());
        QVERIFY(w.chkInteractWithGame->isChecked());
        // Cancelled: nothing changes.
        w.cmdSelectFolder->click();
        QCOMPARE(w.txtVLPath->text(), m_game.game());
        // Not a game folder: the message, and interaction goes off; the folder box keeps the last good one.
        p.queueText(m_game.output() + "/");
        w.cmdSelectFolder->click();
        QCOMPARE(box(p),
                 (QStringList{"VOSK", "0",
                              "The folder you have selected does not appear to be a valid Velmora game "
                              "folder." +
                                  CrLf + "Please select another folder."}));
        QVERIFY(!w.chkInteractWithGame->isChecked());
        QCOMPARE(w.txtVLPath->text(), m_game.game());
    }
    void resetAsksAndClearsOrSaysItFailed() {
        opt::saveFlag(opt::Tooltips, false);
        opt::save(opt::Markup, "1.3");
        frmOptions w;
        ScriptedPrompt& p = m_fixture.prompt();
        p.queueButton(vb::No);
        w.cmdResetRegVals->click();
        QCOMPARE(box(p), (QStringList{"Reset Values?", "36",
                                      "Reseting personal settings cannot be undone." + CrLf +
                                          "Are you sure you want to reset?"}));
        QCOMPARE(opt::text(opt::Tooltips), QString("False"));

        p.queueButton(vb::Yes);
        w.cmdResetRegVals->click();
        QCOMPARE(p.count(), 2);
        // Every option reads its default again, and the window shows it.
        for (const opt::Option& o : {opt::Tooltips, opt::Markup, opt::VLInteractOn, opt::Background})
            QCOMPARE(opt::text(o), QString(o.defaultValue));
        QVERIFY(QSettings(QSettings::NativeFormat, QSettings::UserScope, "VOSK", "VOSK").allKeys().isEmpty());
        QVERIFY(w.chkToolTips->isChecked());
        QCOMPARE(w.txtMarkup->value(), 0.0);

        // A damaged store cannot be cleared: the failure is said.
        QVERIFY(QDir().mkpath(m_fixture.path() + "/settings/VOSK"));
        QVERIFY(writeBytes(m_fixture.path() + "/settings/VOSK/VOSK.conf", "[Options\nTooltips=False\n"));
        p.queueButton(vb::Yes);
        w.cmdResetRegVals->click();
        QCOMPARE(box(p), (QStringList{"Reset", "64", "Reset of personal settings failed!"}));
    }
    void cancelSavesNothing() {
        frmOptions w;
        w.chkToolTips->setChecked(false);
        w.txtCF01->setText("Never");
        w.chkCustomFieldsOn->setChecked(true);
        w.cmdCancel->click();
        QCOMPARE(w.result(), int(QDialog::Rejected));
        QCOMPARE(opt::text(opt::Tooltips), QString("True"));
        QVERIFY(!customFields().on);
        QCOMPARE(readDbOptions(m_fixture), QStringList({"0", "", "", ""}));
        QCOMPARE(m_fixture.prompt().count(), 0);
    }

private:
    ViewsFixture m_fixture;
    GameFolder m_game;
    std::unique_ptr<frmMain> m_main;
};

QTEST_MAIN(TestFrmOptions)
#include "tst_frmoptions.moc"
