// The scripted prompt the tests install: answers played back in order, every prompt recorded, and
// the previous service back in place when it goes.
#include "core/scriptedprompt.h"

#include <QTest>

class TestPrompt : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void playsBackRecordsAndHandsBack() {
        ScriptedPrompt p;
        p.queueButton(vb::No);
        QCOMPARE(MsgBox("q?", vb::YesNo + vb::Question, "T"), int(vb::No));
        QCOMPARE(MsgBox("again?", vb::YesNo), int(vb::Yes)); // nothing queued: the default answer
        QCOMPARE(MsgBox("note"), int(vb::OK));
        QCOMPARE(p.count(), 3);
        QCOMPARE(p.calls().at(0).style, 36);
        QCOMPARE(p.calls().at(0).title, QString("T"));
        QCOMPARE(p.last().title, QString("VOSK"));
        bool cancelled = false;
        QCOMPARE(prompts().inputBox("name?", "Character Name", {}, &cancelled), QString());
        QVERIFY(cancelled);
        p.queueText("Zed");
        QCOMPARE(prompts().inputBox("name?", "Character Name", {}, &cancelled), QString("Zed"));
        QVERIFY(!cancelled);
        {
            ScriptedPrompt inner;
            MsgBox("inner");
            QCOMPARE(inner.count(), 1);
        }
        MsgBox("outer");
        QCOMPARE(p.count(), 6);
        QCOMPARE(p.last().text, QStringLiteral("outer"));
    }
};

QTEST_GUILESS_MAIN(TestPrompt)
#include "tst_prompt.moc"
