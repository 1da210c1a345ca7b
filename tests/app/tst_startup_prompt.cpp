// The prompt service on screen: the classic style codes become the right icon, buttons and default
// button, the clicked button becomes the classic result, and the boxes show the given texts.
#include "app/qtprompt.h"

#include <QAbstractButton>
#include <QApplication>
#include <QInputDialog>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <functional>

class TestQtPrompt : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void styleCodes_data();
    void styleCodes();
    void results_data();
    void results();
    void filters_data();
    void filters();
    void messageBoxShowsTextAndReturnsTheClick_data();
    void messageBoxShowsTextAndReturnsTheClick();
    void inputBoxReturnsTextOrCancel();

private:
    // Runs once the next modal dialog is up.
    static void whenModal(std::function<void(QWidget*)> action);
};

using Icon = QMessageBox::Icon;
using Button = QMessageBox::StandardButton;
using Buttons = QMessageBox::StandardButtons;

void TestQtPrompt::styleCodes_data() {
    QTest::addColumn<int>("style");
    QTest::addColumn<int>("icon");
    QTest::addColumn<int>("buttons");
    QTest::addColumn<int>("defaultButton");
    QTest::newRow("0 plain OK") << 0 << int(QMessageBox::NoIcon) << int(QMessageBox::Ok) << int(QMessageBox::Ok);
    QTest::newRow("36 Yes/No question") << 36 << int(QMessageBox::Question)
                                        << int(Buttons(QMessageBox::Yes | QMessageBox::No)) << int(QMessageBox::Yes);
    QTest::newRow("48 exclamation") << 48 << int(QMessageBox::Warning) << int(QMessageBox::Ok) << int(QMessageBox::Ok);
    QTest::newRow("64 information") << 64 << int(QMessageBox::Information) << int(QMessageBox::Ok)
                                    << int(QMessageBox::Ok);
    QTest::newRow("16 critical") << 16 << int(QMessageBox::Critical) << int(QMessageBox::Ok) << int(QMessageBox::Ok);
    QTest::newRow("1 OK/Cancel") << 1 << int(QMessageBox::NoIcon)
                                 << int(Buttons(QMessageBox::Ok | QMessageBox::Cancel)) << int(QMessageBox::Ok);
    QTest::newRow("3+32+256 Yes/No/Cancel, second default")
        << 3 + 32 + 256 << int(QMessageBox::Question)
        << int(Buttons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel)) << int(QMessageBox::No);
    QTest::newRow("2+512 Abort/Retry/Ignore, third default")
        << 2 + 512 << int(QMessageBox::NoIcon)
        << int(Buttons(QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore)) << int(QMessageBox::Ignore);
    QTest::newRow("5 Retry/Cancel") << 5 << int(QMessageBox::NoIcon)
                                    << int(Buttons(QMessageBox::Retry | QMessageBox::Cancel)) << int(QMessageBox::Retry);
}

void TestQtPrompt::styleCodes() {
    QFETCH(int, style);
    QFETCH(int, icon);
    QFETCH(int, buttons);
    QFETCH(int, defaultButton);
    QCOMPARE(int(qtprompt::iconOf(style)), icon);
    QCOMPARE(int(qtprompt::buttonsOf(style)), buttons);
    QCOMPARE(int(qtprompt::defaultButtonOf(style)), defaultButton);
}

void TestQtPrompt::results_data() {
    QTest::addColumn<int>("button");
    QTest::addColumn<int>("result");
    QTest::newRow("OK") << int(QMessageBox::Ok) << 1;
    QTest::newRow("Cancel") << int(QMessageBox::Cancel) << 2;
    QTest::newRow("Abort") << int(QMessageBox::Abort) << 3;
    QTest::newRow("Retry") << int(QMessageBox::Retry) << 4;
    QTest::newRow("Ignore") << int(QMessageBox::Ignore) << 5;
    QTest::newRow("Yes") << int(QMessageBox::Yes) << 6;
    QTest::newRow("No") << int(QMessageBox::No) << 7;
}

void TestQtPrompt::results() {
    QFETCH(int, button);
    QFETCH(int, result);
    QCOMPARE(qtprompt::resultOf(Button(button)), result);
}

void TestQtPrompt::filters_data() {
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("expected");
    QTest::newRow("Qt form kept") << "Backups (*.bak);;All files (*)" << "Backups (*.bak);;All files (*)";
    QTest::newRow("classic pairs") << "Backup Files (*.bak)|*.bak|All Files (*.*)|*.*"
                                   << "Backup Files (*.bak);;All Files (*.*)";
    QTest::newRow("caption without patterns") << "Pictures|*.gif;*.bmp" << "Pictures (*.gif *.bmp)";
    QTest::newRow("empty") << "" << "";
}

void TestQtPrompt::filters() {
    QFETCH(QString, given);
    QFETCH(QString, expected);
    QCOMPARE(qtprompt::dialogFilter(given), expected);
}

void TestQtPrompt::whenModal(std::function<void(QWidget*)> action) {
    auto* timer = new QTimer;
    timer->setInterval(10);
    QObject::connect(timer, &QTimer::timeout, [timer, action] {
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal)
            return;
        timer->stop();
        timer->deleteLater();
        action(modal);
    });
    timer->start();
}

void TestQtPrompt::messageBoxShowsTextAndReturnsTheClick_data() {
    QTest::addColumn<int>("style");
    QTest::addColumn<QString>("title");
    QTest::addColumn<int>("click");
    QTest::addColumn<QString>("shownTitle");
    QTest::addColumn<int>("result");
    QTest::newRow("default title") << 64 << QString() << int(QMessageBox::Ok) << "VOSK" << 1;
    QTest::newRow("question answered No") << 36 << "Read-Only Database" << int(QMessageBox::No)
                                          << "Read-Only Database" << 7;
    QTest::newRow("question answered Yes") << 36 << "Reset Values?" << int(QMessageBox::Yes) << "Reset Values?" << 6;
}

void TestQtPrompt::messageBoxShowsTextAndReturnsTheClick() {
    QFETCH(int, style);
    QFETCH(QString, title);
    QFETCH(int, click);
    QFETCH(QString, shownTitle);
    QFETCH(int, result);
    QtPrompt prompt;
    QString seenText, seenTitle;
    int seenIcon = -1;
    whenModal([&](QWidget* w) {
        auto* box = qobject_cast<QMessageBox*>(w);
        QVERIFY(box);
        seenText = box->text();
        seenTitle = box->windowTitle();
        seenIcon = int(box->icon());
        box->button(Button(click))->click();
    });
    const int got = prompt.msgBox("Line one\r\nLine two", style, title);
    QCOMPARE(got, result);
    QCOMPARE(seenText, QString("Line one\r\nLine two"));
    QCOMPARE(seenTitle, shownTitle);
    QCOMPARE(seenIcon, int(qtprompt::iconOf(style)));
}

void TestQtPrompt::inputBoxReturnsTextOrCancel() {
    QtPrompt prompt;
    QString label;
    whenModal([&](QWidget* w) {
        auto* dialog = qobject_cast<QInputDialog*>(w);
        QVERIFY(dialog);
        label = dialog->labelText();
        QCOMPARE(dialog->textValue(), QString("Nobody"));
        dialog->setTextValue("Jack O'Neill");
        dialog->accept();
    });
    bool cancelled = true;
    QCOMPARE(prompt.inputBox("Please enter the name of your in-game character", "Character Name", "Nobody", &cancelled),
             QString("Jack O'Neill"));
    QVERIFY(!cancelled);
    QCOMPARE(label, QString("Please enter the name of your in-game character"));

    whenModal([](QWidget* w) { static_cast<QDialog*>(w)->reject(); });
    QCOMPARE(prompt.inputBox("Name?", "Character Name", "typed but cancelled", &cancelled), QString());
    QVERIFY(cancelled);
}

QTEST_MAIN(TestQtPrompt)
#include "tst_startup_prompt.moc"
