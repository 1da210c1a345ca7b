// The equipment editor's record: EditEquipment, the type of a new record, the property rows that
// steer others (name, type, launch type), the lists' pick dialogs, and the save.
#include "core/prompt.h"
#include "data/errorreport.h"
#include "data/quotes.h"
#include "data/recordset.h"
#include "editors/editorparts.h"
#include "editors/frmaddequip.h"
#include "editors/frmpicselect.h"
#include "editors/gridroutines.h"
#include "editors/propertylistwidget.h"
#include "editors/ubgrid.h"
#include "views/equiptypes.h"
#include "views/modmain.h"
#include "views/viewwidgets.h"

#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QTreeWidget>

namespace {
const QString Container = QStringLiteral("Form frmAddEquip");
const QString Module = QStringLiteral("Module modMain");
const QString HelpSection = QStringLiteral("EDIT_EQUIPMENT");

std::function<int()>& typeSource() {
    static std::function<int()> source;
    return source;
}

// The rows whose change is not an edit of the record: a new record's type (it rebuilds the rows) and
// an ammunition's launch type (it only filters the ammunition types).
bool steeringRow(const QString& key) {
    return key == QLatin1String("TYPE") || key == QLatin1String("LAUNCH_TYPE");
}

QHash<QString, QString> valuesOf(const PropertyList& p) {
    QHash<QString, QString> values;
    for (int i = 0; i < p.count(); ++i)
        if (!p.at(i).isCategory())
            values.insert(p.at(i).key, p.at(i).value);
    return values;
}
} // namespace

void setNewEquipmentType(std::function<int()> source) {
    typeSource() = std::move(source);
}

int newEquipmentType() {
    const int type = typeSource() ? typeSource()() : int(equip::Beam);
    return type >= equip::Beam && type <= equip::Ammunition ? type : int(equip::Beam);
}

bool EditEquipment(frmAddEquip* w, const QString& name, int type) {
    const bool adding = name.isEmpty();
    PropertyList& p = w->prpList->list();
    QString stored = name;
    try {
        Recordset rs;
        rs.open(equipedit::recordSql(type, name));
        if (!adding && rs.eof())
            throw NoCurrentRecord();
        equipedit::FillProperties(p, rs, type, adding);
        if (!adding) {
            stored = NzString(rs.value(QStringLiteral("EQUIPMENT_NAME")));
            w->txtComments->setPlainText(NzString(rs.value(QStringLiteral("COMMENTS"))));
            w->setPicture(NzLong(rs.value(QStringLiteral("PIC_ID"))));
            w->lblType->setText(NzString(rs.value(QStringLiteral("TYPE"))));
            FillList(w->lstAllowed, equipedit::classesSql(stored));
            FillList(w->lstBuyLocations, equipedit::stationsSql(stored));
        } else {
            w->setPicture(0);
            w->lblType->setText(DeEnumerate(type));
        }
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("EditEquipment"), Module);
        return false;
    }
    w->m_type = type;
    w->showCaption(QStringLiteral("New: ") + DeEnumerate(type), stored);
    p.buildHelp(HelpSection, DeEnumerate(type).toLower());
    w->prpList->rebuild();
    w->showTitle();
    w->selectFirstEditableRow();

    w->populateGrids(equipedit::grids(), stored);

    w->m_loadedValues = valuesOf(p);
    w->m_loadedPicture = w->m_picture;
    w->m_loadedComments = w->txtComments->toPlainText();
    w->m_loadedClasses = JoinedEntries(w->listEntries(w->lstAllowed));
    w->m_loadedStations = JoinedEntries(w->listEntries(w->lstBuyLocations));
    return true;
}

bool frmAddEquip::load(const QString& name) {
    int type = newEquipmentType();
    if (!name.isEmpty()) {
        try {
            type = equipedit::storedType(name);
        } catch (const VbError& e) {
            ReportDBError(e, QStringLiteral("EditEquipment"), Module);
            return false;
        }
    }
    return EditEquipment(this, name, type);
}

void frmAddEquip::setType(int type) {
    if (!isNew() || type == m_type || type < equip::Beam || type > equip::Ammunition)
        return;
    PropertyList& p = prpList->list();
    const QHash<QString, QString> carried = equipedit::CarriedValues(p);
    try {
        Recordset rs;
        rs.open(equipedit::recordSql(type, QString()));
        equipedit::FillProperties(p, rs, type, true);
        for (auto v = carried.constBegin(); v != carried.constEnd(); ++v) {
            const PropertyRow* r = p.row(v.key());
            if (r && !r->readOnly && r->value != v.value())
                p.setValue(v.key(), v.value());
        }
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("setType"), Container);
    }
    m_type = type;
    setWindowTitle(QStringLiteral("New: ") + DeEnumerate(type));
    lblType->setText(DeEnumerate(type));
    p.buildHelp(HelpSection, DeEnumerate(type).toLower());
    prpList->rebuild();
    showTitle();
    selectFirstEditableRow();
}

// The help under the list shows from the start, and typing edits the first row that can be edited.
void frmAddEquip::selectFirstEditableRow() {
    const PropertyList& p = prpList->list();
    for (int i = 0; i < p.count(); ++i)
        if (!p.at(i).isCategory() && !p.at(i).readOnly) {
            prpList->tree()->setCurrentItem(prpList->itemFor(p.at(i).key));
            return;
        }
}

void frmAddEquip::propertyChanged(const QString& key) {
    if (key == QLatin1String("EQUIPMENT_NAME")) {
        // Blanks around a name are never meant, and would make a second record of the same name.
        const QString typed = prpList->list().value(key);
        if (typed != typed.trimmed())
            prpList->editValue(key, typed.trimmed());
        showTitle();
    } else if (key == QLatin1String("TYPE")) {
        // The rows are built again once the list has finished taking the value.
        const int type = Enumerate(prpList->list().value(key), true);
        QMetaObject::invokeMethod(
            this, [this, type] { setType(type); }, Qt::QueuedConnection);
    } else if (key == QLatin1String("LAUNCH_TYPE")) {
        try {
            equipedit::LaunchTypeChanged(prpList->list());
        } catch (const VbError& e) {
            ReportDBError(e, QStringLiteral("PopulateAmmoList"), Container);
        }
    }
}

void frmAddEquip::cmdPicture_Click() {
    const long chosen = DisplayItemIconDialogbox(m_picture, this);
    if (chosen >= 0)
        setPicture(qint32(chosen));
}

void frmAddEquip::cmdBuyLocations_Click() {
    PickInto(lstBuyLocations, QStringLiteral("Stations"), equipedit::allStationsSql(),
             QStringLiteral("cmdBuyLocations_Click"), Container);
}

void frmAddEquip::cmdAllowed_Click() {
    PickInto(lstAllowed, QStringLiteral("Classes"), equipedit::allClassesSql(),
             QStringLiteral("cmdAllowed_Click"), Container);
}

bool frmAddEquip::hasChanges() const {
    const PropertyList& p = prpList->list();
    for (int i = 0; i < p.count(); ++i) {
        const PropertyRow& r = p.at(i);
        if (r.isCategory() || steeringRow(r.key))
            continue;
        // A row the record did not have when it was loaded (a new record's other type) counts when
        // it holds more than its default.
        if (r.value != m_loadedValues.value(r.key, r.defaultValue))
            return true;
    }
    if (m_picture != m_loadedPicture || txtComments->toPlainText() != m_loadedComments ||
        JoinedEntries(listEntries(lstAllowed)) != m_loadedClasses ||
        JoinedEntries(listEntries(lstBuyLocations)) != m_loadedStations)
        return true;
    return gridsChanged(equipedit::grids());
}

QString frmAddEquip::savedName() const {
    return prpList->list().value(QStringLiteral("EQUIPMENT_NAME"));
}

SavePlan frmAddEquip::savePlan() {
    equipedit::SaveInput in;
    in.type = m_type;
    in.isNew = isNew();
    in.title = lblTitle->text();
    in.properties = &prpList->list();
    in.picture = m_picture;
    in.comments = txtComments->toPlainText();
    in.classes = listEntries(lstAllowed);
    in.stations = listEntries(lstBuyLocations);
    in.loadedClasses = m_loadedClasses;
    in.loadedStations = m_loadedStations;
    for (const GridDef& def : equipedit::grids())
        in.grids.insert(def.widget, &grid(def.widget)->grid());
    return equipedit::BuildSavePlan(in);
}

void OpenEquipmentEditor(const QString& name) {
    EditorWindow::open<frmAddEquip>(
        EditorWindow::caption(QStringLiteral("New: ") + DeEnumerate(newEquipmentType()), name), name);
}
