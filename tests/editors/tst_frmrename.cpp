// The new-name dialog: refusals keep it open with the name still editable; OK gives the name trimmed.
#include "core/scriptedprompt.h"
#include "editors/frmrename.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

class TestFrmRename : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void okChecksTheName_data() {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("refusal"); // empty: accepted
        QTest::addColumn<QString>("title");
        const auto row = [](const char* tag, const QString& typed, const QString& refusal,
                            const QString& title) { QTest::newRow(tag) << typed << refusal << title; };
        const QString invalid = "Please enter a valid name";
        row("empty", "", invalid, "Invalid Name");
        row("blanks only", "  ", invalid, "Invalid Name");
        row("two quotes together", "Zed''s",
            "Names cannot contain a double single-quote! Please change name to continue.", "Invalid name");
        row("blanks trimmed, one quote kept", "  Zed's Coil ", "", "");
    }
    void okChecksTheName() {
        QFETCH(QString, typed);
        QFETCH(QString, refusal);
        QFETCH(QString, title);
        ScriptedPrompt prompt;
        frmRename dialog("Copy", "Old Coil");
        QCOMPARE(dialog.txtName->text(), QString("Old Coil")); // offered to edit
        QVERIFY(dialog.lblPrompt->text().contains("Old Coil"));
        dialog.show();
        dialog.txtName->setText(typed);
        dialog.cmdOK->click();
        QCOMPARE(dialog.isVisible(), !refusal.isEmpty());
        if (refusal.isEmpty()) {
            QCOMPARE(dialog.result(), int(QDialog::Accepted));
            QCOMPARE(dialog.newName(), QString("Zed's Coil"));
            QCOMPARE(prompt.count(), 0);
            return;
        }
        QCOMPARE(prompt.count(), 1);
        QCOMPARE(prompt.last().text, refusal);
        QCOMPARE(prompt.last().title, title);
        QCOMPARE(prompt.last().style, 48);
        QVERIFY(dialog.newName().isEmpty());
        // The name can be corrected and the dialog accepted.
        dialog.txtName->setText("Good Name");
        dialog.cmdOK->click();
        QCOMPARE(dialog.newName(), QString("Good Name"));
    }

    void askReturnsNothingWhenCancelled() {
        ScriptedPrompt prompt;
        QTimer::singleShot(0, [] {
            auto* d = qobject_cast<frmRename*>(QApplication::activeModalWidget());
            QVERIFY(d);
            d->txtName->setText("Typed but cancelled");
            d->cmdCancel->click();
        });
        QCOMPARE(frmRename::Ask("Rename", "Old Coil"), QString());
        QCOMPARE(prompt.count(), 0);
    }
};

QTEST_MAIN(TestFrmRename)
#include "tst_frmrename.moc"
