// The main window's filters: filling the lists, showing the ones the category uses, and the
// refresh each change brings.
#include "app/frmmain_p.h"

#include "data/errorreport.h"
#include "data/recordset.h"
#include "views/modmain.h"

#include <QComboBox>

namespace {
const QString Container = QStringLiteral("Form frmMain");

// The first column of every row of the statement, after a first fixed entry.
QStringList listFrom(const QString& sql, const QString& first) {
    QStringList list;
    if (!first.isEmpty())
        list << first;
    Recordset rs;
    rs.open(sql);
    for (; !rs.eof(); rs.moveNext())
        if (!rs.isNull(0))
            list << rs.value(0).toString();
    rs.close();
    return list;
}

int highestLevel() {
    int top = 0;
    for (const QString& sql : HighestLevelStatements()) {
        Recordset rs;
        rs.open(sql);
        if (!rs.eof() && !rs.isNull(0))
            top = qMax(top, rs.value(0).toInt());
    }
    return top;
}

// Selects the entry with that text; an entry that no longer exists leaves the first one ("All").
void choose(QComboBox* box, const QString& text) {
    const int i = box->findText(text);
    box->setCurrentIndex(i >= 0 ? i : 0);
}
} // namespace

void frmMain::fillFilterLists() {
    SuspendRefresh hold(d->suspend);
    cmbEquipType->addItems(EquipTypeChoices());
    cmbChecked->addItems(CheckedChoices());
    cmbCL->addItems(CombatBands());
    // Each list is filled on its own so that one failing query leaves the others usable.
    try {
        cmbRace->addItems(listFrom(ClassListStatement(), allEntry()));
    } catch (const VbError& e) {
        cmbRace->addItem(allEntry());
        ReportDBError(e, QStringLiteral("Form_Load"), Container);
    }
    try {
        cmbCompType->addItems(listFrom(ComponentTypeListStatement(), allEntry()));
    } catch (const VbError& e) {
        cmbCompType->addItem(allEntry());
        ReportDBError(e, QStringLiteral("Form_Load"), Container);
    }
    int top = 0;
    try {
        top = highestLevel();
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("Form_Load"), Container);
    }
    cmbLevel->addItems(LevelChoices(top));
    fillSubTypes();
}

void frmMain::ReloadFilterLists() {
    SuspendRefresh hold(d->suspend);
    const QList<QComboBox*> boxes = {cmbEquipType, cmbChecked, cmbCL, cmbRace, cmbCompType, cmbLevel};
    QStringList chosen;
    for (QComboBox* box : boxes) {
        chosen << box->currentText();
        box->clear();
    }
    const QString subType = cmbSubType->currentText();
    fillFilterLists();
    // A choice the other database does not have falls back to the list's first entry ("All").
    for (int i = 0; i < boxes.size(); ++i)
        choose(boxes[i], chosen[i]);
    fillSubTypes();
    choose(cmbSubType, subType);
}

void frmMain::fillSubTypes() {
    SuspendRefresh hold(d->suspend);
    const QString type = cmbCompType->currentText();
    cmbSubType->clear();
    if (type.isEmpty() || type == allEntry()) {
        cmbSubType->addItem(allEntry());
        cmbSubType->setEnabled(false);
        return;
    }
    QStringList subtypes;
    try {
        subtypes = listFrom(SubTypeListStatement(type), QString());
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("cmbCompType_Click"), Container);
    }
    if (subtypes.isEmpty()) {
        cmbSubType->addItem(QStringLiteral("N/A"));
        cmbSubType->setEnabled(false);
    } else {
        cmbSubType->addItem(allEntry());
        cmbSubType->addItems(subtypes);
        cmbSubType->setEnabled(true);
    }
}

void frmMain::showFiltersFor(const QString& cat) {
    const FilterUse use = FiltersFor(cat);
    const QList<QPair<QComboBox*, bool>> shown = {{cmbEquipType, use.equipType},
                                                  {cmbLevel, use.level},
                                                  {cmbChecked, use.checked},
                                                  {cmbCompType, use.compType},
                                                  {cmbSubType, use.subType},
                                                  {cmbCL, use.combatBand},
                                                  {cmbRace, use.race}};
    for (const auto& [box, visible] : shown)
        d->filterBoxes.value(box)->setVisible(visible);
}

ListFilters frmMain::currentFilters() const {
    const FilterUse use = FiltersFor(category());
    ListFilters f;
    auto pick = [](bool used, QComboBox* box) {
        return used && !box->currentText().isEmpty() ? box->currentText() : allEntry();
    };
    f.equipType = pick(use.equipType, cmbEquipType);
    f.level = pick(use.level, cmbLevel);
    f.checked = pick(use.checked, cmbChecked);
    f.compType = pick(use.compType, cmbCompType);
    f.subType = pick(use.subType, cmbSubType);
    f.combatBand = pick(use.combatBand, cmbCL);
    f.race = pick(use.race, cmbRace);
    f.customFields = customFields().on;
    return f;
}

void frmMain::cmbData_Click() {
    if (d->suspend)
        return;
    showFiltersFor(category());
    updateMenuState();
    RefreshGrid();
}

void frmMain::cmbCompType_Click() {
    if (d->suspend)
        return;
    fillSubTypes();
    RefreshGrid();
}

void frmMain::filter_Click() {
    if (d->suspend)
        return;
    RefreshGrid();
}

void chooseEntry(QComboBox* box, const QString& text) {
    choose(box, text);
}
