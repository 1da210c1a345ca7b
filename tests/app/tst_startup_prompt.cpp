// The prompt service on screen: the classic style codes become the right icon, buttons and default
// button, the clicked button becomes the classic result, and the boxes show the given texts.
#include "app/qtprompt.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QTest>
#include <QTimer>
#include <functional>

using QMB = QMessageBox;

// Runs once the next modal dialog is up.
static void whenModal(std::function<void(QWidget*)> action) {
    auto* timer = new QTimer;
    QObject::connect(timer, &QTimer::timeout, [timer, action] {
        if (QWidget* modal = QApplication::activeModalWidget()) {
            timer->deleteLater();
            timer->stop();
            action(modal);
        }
    });
    timer->start(10);
}

class TestQtPrompt : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void styleCodes_data() {
        QTest::addColumn<int>("style");
        QTest::addColumn<int>("icon");
        QTest::addColumn<int>("buttons");
        QTest::addColumn<int>("defaultButton");
        QTest::addColumn<int>("result"); // of clicking the default button
        QTest::newRow("36 Yes/No") << 36 << int(QMB::Question) << int(QMB::Yes | QMB::No) << int(QMB::Yes)
                                   << 6;
        QTest::newRow("3+32+256 Yes/No/Cancel, second default")
            << 3 + 32 + 256 << int(QMB::Question) << int(QMB::Yes | QMB::No | QMB::Cancel) << int(QMB::No)
            << 7;
        QTest::newRow("2+16+512 Abort/Retry/Ignore, third default")
            << 2 + 16 + 512 << int(QMB::Critical) << int(QMB::Abort | QMB::Retry | QMB::Ignore)
            << int(QMB::Ignore) << 5;
    }
    void styleCodes() {
        QFETCH(int, style);
        QFETCH(int, icon);
        QFETCH(int, buttons);
        QFETCH(int, defaultButton);
        QFETCH(int, result);
        QCOMPARE(int(qtprompt::iconOf(style)), icon);
        QCOMPARE(int(qtprompt::buttonsOf(style)), buttons);
        QCOMPARE(int(qtprompt::defaultButtonOf(style)), defaultButton);
        QCOMPARE(qtprompt::resultOf(qtprompt::defaultButtonOf(style)), result);
    }
    void boxesShowTheTextsAndReturnTheAnswer() {
        QCOMPARE(qtprompt::dialogFilter("Backup Files|*.bak|All Files (*.*)|*.*"),
                 "Backup Files (*.bak);;All Files (*.*)");
        QtPrompt prompt;
        QString seen;
        whenModal([&](QWidget* w) {
            auto* box = qobject_cast<QMessageBox*>(w);
            QVERIFY(box && box->icon() == QMB::Question);
            seen = box->windowTitle() + "|" + box->text();
            box->button(QMB::No)->click();
        });
        QCOMPARE(prompt.msgBox("Line one\r\nLine two", 36, QString()), 7);
        QCOMPARE(seen, QString("VOSK|Line one\r\nLine two")); // the default title
        bool cancelled = false;
        whenModal([](QWidget* w) { static_cast<QDialog*>(w)->reject(); });
        QCOMPARE(prompt.inputBox("Name?", "Character Name", "typed but cancelled", &cancelled), QString());
        QVERIFY(cancelled);
    }
};

QTEST_MAIN(TestQtPrompt)
#include "tst_startup_prompt.moc"
