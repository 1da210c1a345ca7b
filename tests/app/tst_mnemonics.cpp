// Keyboard mnemonics (Alt+letter) are unique within every window the program can show: the main
// window in each category, every window its menus open (record views, find, build view, editors and
// dialogs, whatever the program holds when this runs), each page of their tab widgets, and each menu.
#include "app/frmmain.h"
#include "core/childwindows.h"
#include "lists/listmodel.h"
#include "viewsfixture.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QKeySequence>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QScopeGuard>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <QUrl>

namespace {
// The Alt key of a caption ("&File" -> "F"), empty without one ("&&" is a plain ampersand).
QString mnemonicOf(const QString& caption) {
    const QKeySequence key = QKeySequence::mnemonic(caption);
    return key.isEmpty() ? QString()
                         : key.toString(QKeySequence::PortableText).section(QLatin1Char('+'), -1).toUpper();
}

// Collects the captions that own a mnemonic and reports letters used twice.
struct Letters {
    QString where;
    QHash<QString, QString> used; // letter -> caption
    QStringList* clashes;
    void add(const QString& caption) {
        const QString key = mnemonicOf(caption);
        if (key.isEmpty())
            return;
        if (used.contains(key))
            *clashes
                << QStringLiteral("%1: \"%2\" and \"%3\" share %4").arg(where, used.value(key), caption, key);
        else
            used.insert(key, caption);
    }
};

// The mnemonics live at this moment: those of the shown captions of the window, and the menu bar's.
void checkShown(QWidget* window, const QString& state, QStringList* clashes) {
    Letters letters{window->windowTitle() + state, {}, clashes};
    for (QMenuBar* bar : window->findChildren<QMenuBar*>())
        for (QAction* a : bar->actions())
            if (a->isVisible())
                letters.add(a->text());
    for (QWidget* w : window->findChildren<QWidget*>()) {
        if (!w->isVisibleTo(window) || w->window() != window)
            continue;
        if (auto* button = qobject_cast<QAbstractButton*>(w))
            letters.add(button->text());
        else if (auto* label = qobject_cast<QLabel*>(w); label && label->buddy())
            letters.add(label->text());
        else if (auto* group = qobject_cast<QGroupBox*>(w))
            letters.add(group->title());
        else if (auto* tabs = qobject_cast<QTabBar*>(w))
            for (int i = 0; i < tabs->count(); ++i)
                if (tabs->isTabVisible(i))
                    letters.add(tabs->tabText(i));
    }
}

// Each menu's own entries, and its submenus.
void checkMenu(QMenu* menu, const QString& where, QStringList* clashes) {
    Letters letters{where + " / " + menu->title(), {}, clashes};
    for (QAction* a : menu->actions()) {
        if (!a->isVisible() || a->isSeparator())
            continue;
        letters.add(a->text());
        if (a->menu())
            checkMenu(a->menu(), letters.where, clashes);
    }
}

// Every state of a window that changes which captions show: each page of each tab widget.
void checkWindow(QWidget* window, QStringList* clashes) {
    checkShown(window, QString(), clashes);
    for (QMenu* menu : window->findChildren<QMenu*>())
        if (!menu->parentWidget() || !qobject_cast<QMenu*>(menu->parentWidget()))
            checkMenu(menu, window->windowTitle(), clashes);
    for (QTabWidget* tabs : window->findChildren<QTabWidget*>()) {
        const int was = tabs->currentIndex();
        for (int i = 0; i < tabs->count(); ++i) {
            tabs->setCurrentIndex(i);
            checkShown(window, " [" + tabs->tabText(i) + "]", clashes);
        }
        tabs->setCurrentIndex(was);
    }
}

QList<QWidget*> shownWindows(QWidget* except) {
    QList<QWidget*> out;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w != except && w->isVisible() && !qobject_cast<QMenu*>(w))
            out << w;
    return out;
}

void closeAll(QWidget* except) {
    CloseChildWindows();
    for (QWidget* w : shownWindows(except))
        w->close();
    QApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}
} // namespace

class TestMnemonics : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() {
        QString error;
        QVERIFY2(m_fixture.setUp(true, &error), qPrintable(error));
        // Nothing leaves the test: no browser, and every question is answered No.
        frmMain::setUrlOpener([](const QUrl&) { return true; });
        for (int i = 0; i < 200; ++i)
            m_fixture.prompt().queueButton(vb::No);
    }
    void cleanupTestCase() {
        frmMain::setUrlOpener(nullptr);
        m_fixture.tearDown();
    }

    void everyWindow() {
        frmMain m;
        m.show();
        QVERIFY(QTest::qWaitForWindowExposed(&m));
        QStringList clashes;
        const auto tidy = qScopeGuard([&m] { closeAll(&m); });

        // A dialog that runs modally is checked and cancelled while it waits.
        QTimer modal;
        QList<QPointer<QWidget>> seenModal;
        connect(&modal, &QTimer::timeout, this, [&] {
            QWidget* w = QApplication::activeModalWidget();
            if (!w)
                return;
            checkWindow(w, &clashes);
            seenModal << w;
            if (auto* dialog = qobject_cast<QDialog*>(w))
                dialog->reject();
            else
                w->close();
        });
        modal.start(20);

        // Entries that would end the program or throw the data away are left out.
        const QStringList skipped{"mnuFileExit", "mnuFileRestoreDB", "mnuEditDelete", "mnuPopupDelete"};
        QList<QAction*> entries;
        for (QAction* a : m.findChildren<QAction*>())
            if (!a->objectName().isEmpty() && !a->menu() && !skipped.contains(a->objectName()))
                entries << a;
        QVERIFY(entries.size() > 20);

        int opened = 0;
        for (int c = 0; c < m.cmbData->count(); ++c) {
            m.cmbData->setCurrentIndex(c);
            checkWindow(&m, &clashes);
            m.lstItems->setCurrentIndex(m.model()->index(0, 0));
            for (QAction* a : entries) {
                m.mnuPopup->aboutToShow(); // the entries follow the selection, as when the menu opens
                if (!a->isEnabled())
                    continue;
                a->trigger();
                QApplication::processEvents();
                for (QWidget* w : shownWindows(&m)) {
                    checkWindow(w, &clashes);
                    ++opened;
                }
                closeAll(&m);
            }
        }
        modal.stop();
        // The record views, the build view and find are among what was opened.
        QVERIFY2(opened >= 12, qPrintable(QString::number(opened)));
        clashes.removeDuplicates();
        QVERIFY2(clashes.isEmpty(), qPrintable(clashes.join('\n')));
    }

    // The check finds a clash where there is one.
    void clashIsFound() {
        QWidget w;
        w.setWindowTitle("Sample");
        auto* label = new QLabel("Cl&ass:", &w);
        label->setBuddy(new QComboBox(&w));
        auto* menus = new QMenuBar(&w);
        menus->addMenu("&Add");
        QStringList clashes;
        checkWindow(&w, &clashes);
        QCOMPARE(clashes, QStringList{"Sample: \"&Add\" and \"Cl&ass:\" share A"});
        label->setText("Cla&ss:");
        clashes.clear();
        checkWindow(&w, &clashes);
        QCOMPARE(clashes, QStringList{});
    }

private:
    ViewsFixture m_fixture;
};

QTEST_MAIN(TestMnemonics)
#include "tst_mnemonics.moc"
