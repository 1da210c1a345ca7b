#include "editors/frmaddstation.h"

#include "core/clock.h"
#include "data/database.h"
#include "data/errorreport.h"
#include "data/quotes.h"
#include "data/recordset.h"
#include "editors/editorparts.h"
#include "editors/gridroutines.h"
#include "editors/ubgrid.h"
#include "views/viewwidgets.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {
const QString Container = QStringLiteral("Form frmAddStation");
const QString Kind = QStringLiteral("Stations");
} // namespace

frmAddStation::frmAddStation(QWidget* parent) : EditorWindow(QStringLiteral("frmAddStation"), Kind, parent) {
    auto* top = new QVBoxLayout(this);
    top->addLayout(NewViewHeader(this, m_icon, m_title, m_typeLine));
    m_icon->setVisible(false); // stations have no picture
    m_typeLine->setText(QStringLiteral("Station"));

    tabMain = new QTabWidget(this);
    tabMain->setObjectName(QStringLiteral("tabMain"));
    tabMain->addTab(buildGeneral(), QStringLiteral("General"));
    tabMain->addTab(buildSells(), QStringLiteral("Sells"));
    txtComments = NewCommentsBox(this);
    tabMain->addTab(txtComments, QStringLiteral("Comments"));
    top->addWidget(tabMain, 1);
    top->addLayout(buttonRow());

    setTips(QStringLiteral("ADD_STATION"), QStringLiteral("station"),
            {{txtName, "NAME"},
             {cmbSector, "SECTOR"},
             {ubgTerminals, "TERMINALS"},
             {txtComments, "COMMENTS"},
             {cmdSave, "SAVE"},
             {cmdCancel, "CANCEL"}});
    for (const station::Sells& s : station::sells())
        SetTip(sellsList(s.widget),
               GetToolTip(QStringLiteral("ADD_STATION"), QStringLiteral("SELLS"), s.kind));
    resize(640, 520);
}

QWidget* frmAddStation::buildGeneral() {
    auto* page = new QWidget;
    auto* col = new QVBoxLayout(page);
    auto* form = new QFormLayout;
    txtName = NewNameBox(page);
    cmbSector = new QComboBox(page);
    cmbSector->setObjectName(QStringLiteral("cmbSector"));
    cmbSector->setMinimumContentsLength(22);
    lblSystem = new QLabel(page);
    lblSystem->setObjectName(QStringLiteral("lblSystem"));
    auto* sector = new QHBoxLayout;
    sector->addWidget(cmbSector);
    sector->addWidget(lblSystem, 1);
    form->addRow(BuddyLabel(tr("&Name:"), txtName, page), txtName);
    form->addRow(BuddyLabel(tr("S&ector:"), cmbSector, page), sector);
    col->addLayout(form);

    auto* box = new QGroupBox(station::terminals().caption, page);
    auto* inner = new QVBoxLayout(box);
    ubgTerminals = new UBGrid(station::terminals().widget, box);
    inner->addWidget(ubgTerminals);
    col->addWidget(box, 1);

    connect(txtName, &QLineEdit::textChanged, this, [this](const QString& t) { m_title->setText(t); });
    connect(cmbSector, &QComboBox::currentIndexChanged, this, &frmAddStation::showSystem);
    return page;
}

QWidget* frmAddStation::buildSells() {
    auto* page = new QWidget;
    auto* grid = new QGridLayout(page);
    int at = 0;
    for (const station::Sells& s : station::sells()) {
        const QString button = QStringLiteral("cmd") + s.widget.mid(3);
        const PickListBox p = NewPickListBox(page, s.kind, s.widget, button);
        p.change->setText(tr("Change &%1...").arg(s.kind));
        grid->addWidget(p.box, at / 2, at % 2);
        ++at;
        const QString widget = s.widget;
        connect(p.change, &QPushButton::clicked, this, [this, widget] { cmdSells_Click(widget); });
    }
    return page;
}

QListWidget* frmAddStation::sellsList(const QString& widget) const {
    return findChild<QListWidget*>(widget);
}

bool frmAddStation::load(const QString& name) {
    try {
        m_systems.clear();
        QStringList sectors;
        {
            Recordset rs;
            rs.open(station::sectorsSql());
            for (; !rs.eof(); rs.moveNext()) {
                sectors << NzString(rs.value(0));
                m_systems.insert(sectors.last(), NzString(rs.value(1)));
            }
        }
        m_loaded = name.isEmpty() ? station::Fields() : station::readRecord(name);
        showCaption(QStringLiteral("Add Station"), m_loaded.name);
        if (!name.isEmpty()) {
            // The name identifies the record being changed.
            txtName->setReadOnly(true);
            for (const station::Sells& s : station::sells())
                FillList(sellsList(s.widget), s.loadSql(m_loaded.name));
        }
        // A sector the list lacks is still shown as the station has it, so that showing it changes
        // nothing.
        if (!m_loaded.sector.isEmpty() && !sectors.contains(m_loaded.sector))
            sectors << m_loaded.sector;
        const QSignalBlocker quiet(cmbSector);
        cmbSector->addItem(QString());
        cmbSector->addItems(sectors);
        cmbSector->setCurrentIndex(
            qMax(0, cmbSector->findText(m_loaded.sector, Qt::MatchExactly | Qt::MatchCaseSensitive)));
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("Form_Load"), Container);
        return false;
    }
    for (const station::Sells& s : station::sells())
        m_loadedSells.insert(s.widget, JoinedEntries(listEntries(sellsList(s.widget))));
    txtName->setText(m_loaded.name);
    m_title->setText(m_loaded.name);
    txtComments->setPlainText(m_loaded.comments);
    showSystem();
    populateGrids({station::terminals()}, m_loaded.name);
    return true;
}

void frmAddStation::showSystem() {
    const QString sector = cmbSector->currentText();
    const QString system = m_systems.value(sector);
    lblSystem->setText(system.isEmpty() ? QString() : tr("in the %1 system").arg(system));
    m_typeLine->setText(sector.isEmpty() ? QStringLiteral("Station")
                        : system.isEmpty()
                            ? QStringLiteral("Station in ") + sector
                            : QStringLiteral("Station in ") + sector + QStringLiteral(", ") + system);
}

station::Fields frmAddStation::fields() const {
    station::Fields f;
    f.name = txtName->text().trimmed();
    f.sector = cmbSector->currentText();
    f.comments = txtComments->toPlainText();
    return f;
}

void frmAddStation::cmdSells_Click(const QString& widget) {
    for (const station::Sells& s : station::sells())
        if (s.widget == widget)
            PickInto(sellsList(widget), s.kind, s.allSql,
                     QStringLiteral("cmd") + widget.mid(3) + QStringLiteral("_Click"), Container);
}

bool frmAddStation::recordChanged() const {
    const station::Fields f = fields();
    return f.sector != m_loaded.sector || f.comments != m_loaded.comments || (isNew() && !f.name.isEmpty());
}

bool frmAddStation::hasChanges() const {
    if (recordChanged() || GridChanged(ubgTerminals->grid()))
        return true;
    for (const station::Sells& s : station::sells())
        if (JoinedEntries(listEntries(sellsList(s.widget))) != m_loadedSells.value(s.widget))
            return true;
    return false;
}

QString frmAddStation::savedName() const {
    return fields().name;
}

SavePlan frmAddStation::savePlan() {
    const station::Fields f = fields();
    const QString quoted = FixQuotes(f.name);
    SavePlan plan;
    plan.container = Container;
    plan.validate = gridChecks({station::terminals()});
    plan.checkInput = [f] { return CheckRecordInput(f.name, {f.name, f.sector}); };
    plan.writeRecord = WriteByStatement(
        isNew(), recordChanged(), [f] { return station::insertSql(f, Now()); },
        [f] { return station::updateSql(f, Now()); });
    for (const station::Sells& s : station::sells())
        plan.writes.append(SaveStep::forList(listEntries(sellsList(s.widget)), m_loadedSells.value(s.widget),
                                             s.table, station::StationColumn, s.valueColumn, quoted));
    plan.writes.append(gridWrite(station::terminals(), f.name));
    return plan;
}

void OpenStationEditor(const QString& name) {
    EditorWindow::open<frmAddStation>(EditorWindow::caption(QStringLiteral("Add Station"), name), name);
}
