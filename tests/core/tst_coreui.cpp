// The widget services every window shares: the tooltip component, the progress window, and the one
// print path with its PDF rule (no file is written that the user did not choose).
#include "core/frmprogress.h"
#include "core/printjob.h"
#include "core/scriptedprompt.h"
#include "core/settings.h"
#include "core/tooltip.h"
#include "isolatedsettings.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QPainter>
#include <QPrinter>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

namespace {
// A document of `pages` pages, each with its number.
PrintRequest document(int pages) {
    PrintRequest r;
    r.title = QStringLiteral("Beam: Hunter's Lance");
    r.paint = [pages](QPrinter& printer) {
        QPainter p;
        if (!p.begin(&printer))
            return false;
        for (int i = 0; i < pages; ++i) {
            if (i > 0)
                printer.newPage();
            p.drawText(100, 100, QStringLiteral("Page %1").arg(i + 1));
        }
        return p.end();
    };
    return r;
}

int pdfPages(const QString& file) {
    QFile f(file);
    if (!f.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray data = f.readAll();
    return data.startsWith("%PDF") ? int(data.count("/Type /Page\n")) : -1;
}
} // namespace

class TestCoreUi : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() {
        QVERIFY(m_settings.isValid());
        printjob::setPrinterCheck([] { return false; });
    }
    void init() {
        DeleteAllSettings();
        m_prompt.clear();
    }

    void tips_data() {
        QTest::addColumn<bool>("on");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("plain");
        QTest::addColumn<QString>("html"); // a piece the rich tooltip must hold
        auto row = [](const char* tag, bool on, const char* text, const char* plain, const char* html) {
            QTest::newRow(tag) << on << QString(text) << QString(plain) << QString(html);
        };
        row("plain text", true, "Close this window.", "Close this window.", "<td>Close this window.</td>");
        row("written line break", true, "one\\ntwo", "one\ntwo", "one<br>two");
        row("CR LF line break", true, "one\r\ntwo", "one\ntwo", "one<br>two");
        row("markup is shown as text", true, "a <b> & c", "a <b> & c", "a &lt;b&gt; &amp; c");
        row("tooltips off", false, "Close this window.", "", "");
        row("empty text", true, "  ", "", "");
    }
    void tips() {
        QFETCH(bool, on);
        QFETCH(QString, text);
        QFETCH(QString, plain);
        QFETCH(QString, html);
        opt::saveFlag(opt::Tooltips, on);
        QLabel w;
        w.setToolTip("an old tip");
        SetTip(&w, text);
        QCOMPARE(TipText(&w), plain);
        if (html.isEmpty()) {
            QVERIFY(w.toolTip().isEmpty());
        } else {
            QVERIFY2(w.toolTip().contains(html), qPrintable(w.toolTip()));
            QVERIFY(w.toolTip().contains("width=\"240\""));
            QCOMPARE(w.toolTipDuration(), 20000);
        }
    }

    // Without the window layer progress goes nowhere; with it a window shows the caption, the bar
    // moves with the work, Cancel is heard, and the window goes with the operation.
    void progressWindow() {
        setProgressFactory({});
        std::unique_ptr<Progress> silent = StartProgress("Sending Bug Submission", true);
        silent->setRange(10);
        silent->advance(3);
        QVERIFY(!silent->wasCancelled() && !findProgress());
        silent.reset();

        InstallProgressWindow();
        auto guard = qScopeGuard([] { setProgressFactory({}); });
        {
            std::unique_ptr<Progress> p = StartProgress("Sending Bug Submission", true);
            frmProgress* w = findProgress();
            QVERIFY(w && w->isVisible());
            QCOMPARE(w->windowTitle(), QString("Sending Bug Submission"));
            QCOMPARE(w->lblCaption->text(), QString("Sending Bug Submission"));
            QCOMPARE(w->prgBar->maximum(), 0); // no end known yet: a busy bar
            p->setRange(4);
            p->advance();
            QCOMPARE(w->prgBar->value() * 4, w->prgBar->maximum());
            p->setText("Connecting");
            QCOMPARE(w->lblStep->text(), QString("Connecting"));
            QVERIFY(w->cmdCancel->isVisible() && !p->wasCancelled());
            w->close(); // closing by hand asks to stop, the window stays until the work ends
            QVERIFY(p->wasCancelled() && w->isVisible());
        }
        QVERIFY(!findProgress());
        std::unique_ptr<Progress> fixed = StartProgress("Restoring", false);
        QVERIFY(findProgress() && !findProgress()->cmdCancel->isVisible());
        fixed.reset();
        // A quick operation asked to show only when slow never shows; a slow one does.
        std::unique_ptr<Progress> later = StartProgress("Refreshing Grid", false, 150);
        later->setValue(1);
        QVERIFY(findProgress() && findProgress()->isHidden());
        QTest::qWait(200);
        later->setText("Equipment");
        QVERIFY(findProgress()->isVisible());
    }

    void proposedPdfNames() {
        for (const auto& [title, name] : {std::pair{"a/b\\c*d?e\"f<g>h|i", "abcdefghi.pdf"},
                                          {"Build View...", "Build View.pdf"},
                                          {":/?", "VOSK.pdf"}})
            QCOMPARE(printjob::proposedPdfName(title), QString(name));
    }

    // No printer: a PDF file is offered; only the file the user chose is written, with ".pdf" added
    // when the name has no suffix; a folder that cannot be written is told.
    void withoutPrinterOnlyTheChosenPdfIsWritten_data() {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<QString>("written");
        QTest::addColumn<int>("outcome");
        for (const auto& [answer, written, outcome] :
             {std::tuple{"", "", PrintOutcome::Cancelled},
              {"sheet.pdf", "sheet.pdf", PrintOutcome::SavedPdf},
              {"sheet", "sheet.pdf", PrintOutcome::SavedPdf},
              {"no/such/folder/sheet.pdf", "", PrintOutcome::Failed}})
            QTest::newRow(*answer ? answer : "cancelled")
                << QString(answer) << QString(written) << int(outcome);
    }
    void withoutPrinterOnlyTheChosenPdfIsWritten() {
        QFETCH(QString, answer);
        QFETCH(QString, written);
        QFETCH(int, outcome);
        QTemporaryDir out;
        if (!answer.isEmpty())
            m_prompt.queueText(out.filePath(answer));
        QCOMPARE(int(PrintDocumentWith(document(3), nullptr)), outcome);
        const ScriptedPrompt::Call ask = m_prompt.calls().first();
        QVERIFY(ask.kind == ScriptedPrompt::Kind::SaveFile);
        QCOMPARE(ask.extra, QString("Beam Hunter's Lance.pdf"));
        QVERIFY(ask.title.contains("*.pdf"));
        QStringList files = QDir(out.path()).entryList(QDir::Files);
        QCOMPARE(files, written.isEmpty() ? QStringList() : QStringList{written});
        if (!written.isEmpty())
            QCOMPARE(pdfPages(out.filePath(written)), 3);
        if (outcome == int(PrintOutcome::Failed)) {
            QCOMPARE(m_prompt.last().kind, ScriptedPrompt::Kind::MsgBox);
            QVERIFY(m_prompt.last().text.contains("sheet.pdf") && m_prompt.last().style == vb::Exclamation);
        } else {
            QCOMPARE(m_prompt.count(), 1);
        }
    }

private:
    static frmProgress* findProgress() {
        for (QWidget* w : QApplication::topLevelWidgets())
            if (auto* p = qobject_cast<frmProgress*>(w))
                return p;
        return nullptr;
    }

    IsolatedSettings m_settings;
    ScriptedPrompt m_prompt;
};

QTEST_MAIN(TestCoreUi)
#include "tst_coreui.moc"
