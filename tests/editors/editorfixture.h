#pragma once
// What the editor windows' tests share: the sample world in a program folder of its own, a fixed
// clock, the records the editors announce as saved, the window a kind and name open, edits made as
// the user would make them, and the database read back as text.
#include "core/childwindows.h"
#include "core/clock.h"
#include "data/database.h"
#include "data/quotes.h"
#include "data/recordset.h"
#include "editors/editors.h"
#include "editors/editorwindow.h"
#include "editors/frmaddcomponent.h"
#include "editors/frmaddequip.h"
#include "editors/frmadditem.h"
#include "editors/frmaddrawmaterials.h"
#include "editors/gridroutines.h"
#include "editors/propertylistwidget.h"
#include "editors/ubgrid.h"
#include "editortests.h"
#include "recordworld.h"
#include "viewsfixture.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QTest>
#include <sqlite3.h>

inline const QDateTime Stamp(QDate(2026, 11, 21), QTime(9, 30, 0));
inline const QString Old = QStringLiteral("2020-01-01 00:00:00");

// The texts of the boxes the editors refuse a save with.
inline const QString EmptyText = QStringLiteral("One or more of the values entered must not be empty");
inline const QString QuotesText =
    QStringLiteral("Names cannot contain a double single-quote! Please change name to continue.");
inline const QString TakenText =
    QStringLiteral("The name of the item you entered already exists, please rename this item");

inline QString lit(const QString& s) {
    return QLatin1Char('\'') + FixQuotes(s) + QLatin1Char('\'');
}

// Every row of the statement, its cells joined by '|' (NULL for no value).
inline QStringList rows(const QString& sql) {
    Recordset rs;
    rs.open(sql);
    QStringList out;
    for (; !rs.eof(); rs.moveNext()) {
        QStringList cells;
        for (int i = 0; i < rs.fieldCount(); ++i)
            cells << (rs.isNull(i) ? QStringLiteral("NULL") : rs.value(i).toString());
        out << cells.join(QLatin1Char('|'));
    }
    return out;
}

inline int changes() {
    return sqlite3_total_changes(db().handle());
}

// Types a row into the grid's entry row.
inline void addRow(UBGrid* g, const QStringList& cells) {
    const int row = g->grid().rows() - 1;
    for (int c = 0; c < cells.size(); ++c)
        g->grid().userEdit(row, c + 1, cells.at(c));
}

template <typename... Editors> void setPicture(QWidget* w, qint32 picture) {
    const bool set =
        ((qobject_cast<Editors*>(w) ? (qobject_cast<Editors*>(w)->setPicture(picture), true) : false) || ...);
    QVERIFY2(set, "the window has no picture");
}

// What the window shows under the name: a box's, drop-down's, label's or property row's text, a
// grid's number of rows, a list's entries joined by "; "; with set, the value is first set (a
// property row that refuses it reads "refused").
inline QString field(QWidget* w, const QString& name, const QString* set = nullptr) {
    if (auto* g = w->findChild<UBGrid*>(name))
        return QString::number(g->grid().lastDataRow());
    if (auto* list = w->findChild<QListWidget*>(name))
        return EditorWindow::listEntries(list).join(QStringLiteral("; "));
    if (auto* label = w->findChild<QLabel*>(name))
        return label->text();
    if (auto* box = w->findChild<QLineEdit*>(name)) {
        if (set)
            box->setText(*set);
        return box->text();
    }
    if (auto* box = w->findChild<QComboBox*>(name)) {
        if (set)
            box->setCurrentText(*set);
        return box->currentText();
    }
    if (auto* pane = w->findChild<QPlainTextEdit*>(name)) {
        if (set)
            pane->setPlainText(*set);
        return pane->toPlainText();
    }
    for (auto* p : w->findChildren<PropertyListWidget*>())
        if (p->list().row(name)) {
            if (set && !p->editValue(name, *set))
                return QStringLiteral("refused");
            return p->list().value(name);
        }
    return QStringLiteral("nothing named so");
}

// One edit, as the user makes it, named by its widget or property row:
//   "txtPrice=80"              types into a box, chooses in a drop-down or edits a property row
//   "txtComments~changed"      the same, then puts back what was there
//   "ubgMOBs+Hive Queen|Rare"  types a row into a grid ("~" instead of "+": and removes it again)
//   "ubgMOBs[1,2]=Rare"        changes a grid cell
//   "lstBuyLocations+Post"     adds to a list; "lstBuyLocations-" empties it
//   "picture=7"                chooses a picture
inline void edit(QWidget* w, const QString& change) {
    static const QRegularExpression form(QStringLiteral("^([\\w.]+)(?:\\[(-?\\d+),(\\d+)\\])?([=~+-])(.*)$"),
                                         QRegularExpression::DotMatchesEverythingOption);
    const auto m = form.match(change);
    QVERIFY2(m.hasMatch(), qPrintable(change));
    const QString name = m.captured(1), op = m.captured(4), value = m.captured(5);
    if (auto* g = w->findChild<UBGrid*>(name)) {
        if (!m.captured(2).isEmpty()) {
            const int row = m.captured(2).toInt();
            g->grid().userEdit(row < 0 ? g->grid().lastDataRow() + 1 + row : row, m.captured(3).toInt(),
                               value);
            return;
        }
        addRow(g, value.split(QLatin1Char('|')));
        if (op == QLatin1String("~"))
            g->grid().userEdit(g->grid().lastDataRow(), 1, NoneEntry);
    } else if (auto* list = w->findChild<QListWidget*>(name)) {
        if (op == QLatin1String("-"))
            list->clear();
        else
            list->addItem(value);
    } else if (name == QLatin1String("picture")) {
        setPicture<frmAddComponent, frmAddEquip, frmAddItem, frmAddRawMaterials>(w, value.toInt());
    } else {
        const QString was = field(w, name);
        QVERIFY2(was != QLatin1String("nothing named so"), qPrintable(change));
        QVERIFY2(field(w, name, &value) != QLatin1String("refused"), qPrintable(change));
        if (op == QLatin1String("~"))
            QCOMPARE(field(w, name, &was), was);
    }
}

// Each kind's main table and name column, and the caption of its window for a new record (a new
// equipment is a beam in these tests).
struct Kind {
    QString table, nameColumn, newTitle;
};
inline Kind kindOf(const QString& kind) {
    static const QHash<QString, Kind> kinds{
        {"Components", {"COMPONENTS", "COMPONENT_NAME", "Add Component"}},
        {"Items", {"ITEMS", "ITEM_NAME", "Add Item"}},
        {"Stations", {"STATIONS", "STATION_NAME", "Add Station"}},
        {"Raw Materials", {"RAW_MATERIALS", "RAW_MATERIAL_NAME", "Add Raw Material"}},
        {"MOBs", {"MOBS", "MOB_NAME", "New: MOB"}},
        {"Equipment", {"EQUIPMENTS", "EQUIPMENT_NAME", "New: Beam"}}};
    return kinds.value(kind);
}

// The editor of the kind open on the record (an empty name: a new record).
template <typename W = EditorWindow>
W* openEditor(const QString& kind, const QString& name, const QString& newTitle = QString()) {
    OpenEditor(kind, name);
    const QString title = !name.isEmpty()      ? QStringLiteral("Edit: ") + name
                          : newTitle.isEmpty() ? kindOf(kind).newTitle
                                               : newTitle;
    return qobject_cast<W*>(FindChildWindow(title));
}

class EditorFixture : public ViewsFixture {
public:
    bool setUp(QString* error) {
        saved.clear();
        setClock([] { return Stamp; });
        setRecordSavedHandler(
            [this](const QString& kind, const QString& name) { saved << kind + ": " + name; });
        return ViewsFixture::setUp(true, error);
    }
    void tearDown() {
        CloseChildWindows();
        QApplication::processEvents();
        setRecordSavedHandler(nullptr);
        setClock(nullptr);
        ViewsFixture::tearDown();
    }
    // Statements that must run; a failure fails the test.
    void run(const QStringList& statements) {
        QString error;
        QVERIFY2(exec(statements, &error), qPrintable(error));
    }
    QStringList saved;
};
