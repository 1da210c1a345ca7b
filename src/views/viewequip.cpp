// Filling the equipment view: ViewEquipDetails and the procedures of frmEquipment that read data.
#include "core/childwindows.h"
#include "core/imagestore.h"
#include "data/errorreport.h"
#include "data/quotes.h"
#include "data/recordset.h"
#include "views/equiptypes.h"
#include "views/frmequipment.h"
#include "views/mobtrees.h"
#include "views/openviews.h"
#include "views/viewwidgets.h"
#include "views/whereusedpanel.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QTabWidget>
#include <QToolButton>
#include <QTreeWidget>
#include <cmath>

namespace {
// A figure read back from a value box as shown ("1,250" or "12.5").
double boxNumber(const QLineEdit* box) {
    return box->text().isEmpty() ? 0.0 : NzDouble(QVariant(box->text()));
}
} // namespace

void ViewEquipDetails(const QString& name, int typeIndex, const QString& typeName) {
    const QString caption = typeName + ": " + name;
    if (CheckWindow(caption))
        return;
    QPointer<frmEquipment> frm = new frmEquipment(ViewOwner());
    try {
        frm->load(name, typeIndex, typeName);
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("ViewEquipDetails"), QStringLiteral("Module modMain"));
    } catch (const std::exception& e) {
        ReportDBError(e, QStringLiteral("ViewEquipDetails"), QStringLiteral("Module modMain"));
    }
    if (!frm)
        return;
    // A record that could not be read leaves nothing worth showing; a later failure leaves the part filled.
    if (!frm->headerLoaded()) {
        delete frm;
        return;
    }
    frm->setWindowTitle(caption);
    RegisterChildWindow(frm);
    frm->show();
}

void frmEquipment::load(const QString& name, int typeIndex, const QString& typeName) {
    m_name = name;
    m_type = typeIndex;
    m_typeName = typeName;
    m_title->setText(name);
    const QString q = FixQuotes(name);

    Recordset rs;
    rs.open(GetSQL(typeIndex, false, false, true, true, QString(), false) +
            " AND EQUIPMENTS.EQUIPMENT_NAME = '" + q + "'");
    if (rs.eof())
        throw NoCurrentRecord();
    fillHeader(rs);
    fillStatistics(rs);
    const QPixmap icon = QPixmap::fromImage(GetItemIcon(NzLong(rs.value(10))));
    m_icon->setPixmap(icon);
    if (!icon.isNull())
        setWindowIcon(icon);
    setWindowTitle(typeName + ": " + name);
    m_headerLoaded = true;
    rs.close();

    if (typeIndex == equip::Device)
        m_statsPanel->setVisible(false);
    if (typeIndex == equip::Missile || typeIndex == equip::Projectile)
        fillAmmoList();

    FillRecordList(lstBuyLocations,
                   "SELECT STATIONS_STATION FROM BUY_EQUIPMENT_LOCATION WHERE EQUIPMENTS_EQUIPMENT = '" + q +
                       "' ORDER BY STATIONS_STATION");

    m_blueprint->clear();
    m_blueprint->addNode(QString(), name, name, buildimg::Equipment);
    bool recurse = true;
    BuildEquipTree(name, name, *m_blueprint, recurse);

    FillRecordList(lstAllowed, "SELECT CLASS_NAME FROM EQUIPMENT_CLASS WHERE EQUIPMENTS_EQUIPMENT = '" + q +
                                   "' ORDER BY CLASS_NAME");
    PopulateMOBs(name);
    fillSpecials();
    setTooltips();
    AddWhereUsedTab(tabEquipment, bom::Kind::Equipment, name);
}

void frmEquipment::fillHeader(Recordset& rs) {
    SetBoxText(txtManufacturer, NzString(rs.value(2)));
    lblType->setText("Level " + NzString(rs.value(3)) + " " + NzString(rs.value(1)));
    SetBoxText(txtQuality, NzString(rs.value(6)) + "%");
    txtComments->setPlainText(NzString(rs.value(4)));
    SetBoxText(txtLastUpdated, NzString(rs.value(9)));
    if (NzBool(rs.value(7)))
        lblType->setText("Unique " + lblType->text());

    SetBoxText(txtPurchasePrice, PriceText(FormatWhole(NzLong(rs.value(5))), false));
    SetBoxText(txtManufFee, PriceText(FormatWhole(NzLong(rs.value(8))), true));
    SetBoxText(txtPMPrice, QStringLiteral("TBA"));
    SetBoxText(txtSRP, QStringLiteral("TBA"));

    const CustomFields& cf = customFields();
    if (cf.on) {
        for (int i = 0; i < 3; ++i) {
            // The first pair is shown whenever custom fields are on; the others only with a caption.
            if (i > 0 && cf.caption[i].isEmpty())
                continue;
            lblCustom[i]->setText(cf.caption[i] + ":");
            SetBoxText(txtCustom[i], NzString(rs.value(11 + i)));
            lblCustom[i]->setVisible(true);
            txtCustom[i]->setVisible(true);
        }
    }
}

void frmEquipment::fillStatistics(Recordset& rs) {
    const bool projectileAmmo =
        m_type == equip::Ammunition &&
        NzString(rs.value(QStringLiteral("LAUNCH_TYPE"))) == QLatin1String("Projectile");
    for (int i = 14; i < rs.fieldCount(); ++i) {
        int k = i - 14;
        const QString column = rs.fieldName(i);
        if (projectileAmmo &&
            (column == QLatin1String("AMMO_RANGE") || column == QLatin1String("MANEUVERABILITY"))) {
            lblSpecData[k]->setVisible(false);
            txtSpecData[k]->setVisible(false);
            continue;
        }
        if (projectileAmmo && column == QLatin1String("DAMAGE_PER_CREDIT"))
            k -= 2; // fills the gap the hidden range and maneuverability leave
        if (k < 0 || k >= StatSlots)
            continue;
        lblSpecData[k]->setText(FormatFieldName(column) + ":");
        SetTip(lblSpecData[k], GetToolTip(m_typeName.toUpper(), column, m_typeName));
        const FieldKind kind = rs.fieldKind(i);
        QString value;
        if (kind == FieldKind::Long)
            value = FormatWhole(NzLong(rs.value(i)));
        else if (kind == FieldKind::Single || kind == FieldKind::Double)
            value = RoundText(NzDouble(rs.value(i)));
        else
            value = NzString(rs.value(i));
        SetBoxText(txtSpecData[k], value);
        lblSpecData[k]->setVisible(true);
        txtSpecData[k]->setVisible(true);
    }
}

void frmEquipment::fillAmmoList() {
    tabEquipment->addTab(m_ammoPage, QStringLiteral("Ammo"));
    const int k = m_type == equip::Missile ? 3 : 4;
    const QString ammoType = txtSpecData[k]->text();
    FillRecordList(lstAmmo, "SELECT EQUIPMENT_NAME FROM AMO_STATS WHERE AMO_TYPE = '" + FixQuotes(ammoType) +
                                "' ORDER BY EQUIPMENT_NAME");
    connect(lstAmmo, &QListWidget::currentItemChanged, this, [this] { lstAmmo_Click(); });
    // The first round is picked, and its figures shown, as the page opens.
    if (RecordCount(lstAmmo) > 0) {
        lstAmmo->setCurrentRow(0);
        tbAmmoView->setEnabled(true);
    }
}

void frmEquipment::lstAmmo_Click() {
    QListWidgetItem* item = lstAmmo->currentItem();
    if (!item || IsPlaceholder(item))
        return;
    try {
        const bool missile = lblType->text().endsWith(QLatin1String("Missile"));
        const bool projectile = lblType->text().endsWith(QLatin1String("Projectile"));
        const double e = boxNumber(txtSpecData[0]);
        const double d = boxNumber(txtSpecData[1]);
        const qint32 r = qint32(std::llround(boxNumber(txtSpecData[missile ? 2 : 3]))); // rounds are whole
        Recordset rs;
        rs.open("SELECT DAMAGE, MANEUVERABILITY, RANGE FROM AMO_STATS WHERE EQUIPMENT_NAME = '" +
                FixQuotes(item->text()) + "'");
        if (rs.eof())
            throw NoCurrentRecord();
        const double damage = NzDouble(rs.value(0));
        SetBoxText(txtAmmoName, item->text());
        SetBoxText(txtAmmoDamage, NzString(rs.value(0)));
        txtDamagePerSecond->clear();
        txtAmmoEfficiency->clear();
        if (missile) {
            for (QWidget* w : {static_cast<QWidget*>(lblAmmoRange), static_cast<QWidget*>(txtAmmoRange),
                               static_cast<QWidget*>(lblAmmoManeuverability),
                               static_cast<QWidget*>(txtAmmoManeuverability)})
                w->setVisible(true);
            if (rs.isNull(1) || rs.isNull(2)) {
                SetBoxText(txtAmmoRange, QStringLiteral("Undefined"));
                SetBoxText(txtAmmoManeuverability, QStringLiteral("Undefined"));
            } else {
                SetBoxText(txtAmmoRange, NzString(rs.value(2)));
                SetBoxText(txtAmmoManeuverability, NzString(rs.value(1)));
            }
        } else if (projectile) {
            for (QWidget* w : {static_cast<QWidget*>(lblAmmoRange), static_cast<QWidget*>(txtAmmoRange),
                               static_cast<QWidget*>(lblAmmoManeuverability),
                               static_cast<QWidget*>(txtAmmoManeuverability)})
                w->setVisible(false);
        }
        if (damage != 0) {
            if (d != 0 && r != 0)
                SetBoxText(txtDamagePerSecond, RoundText(damage * r / d));
            if (e != 0 && r != 0)
                SetBoxText(txtAmmoEfficiency, RoundText(damage * r / e));
        }
    } catch (const VbError& err) {
        ReportDBError(err, QStringLiteral("lstAmmo_Click"), QStringLiteral("Form frmEquipment"));
    }
}

void frmEquipment::PopulateMOBs(const QString& name) {
    try {
        m_mobs->clear();
        ::PopulateMOBs(DropKind::Equipment, name, *m_mobs);
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("PopulateMOBs"), QStringLiteral("Form frmEquipment"));
    }
}

void frmEquipment::fillSpecials() {
    Recordset rs;
    rs.open(
        "SELECT SPECIAL, AMOUNT, UNITS, ENERGY_USE, RANGE, DURATION, SHUNT FROM EQUIP_SPECIALS WHERE EQUIPMENT_NAME ='" +
        FixQuotes(m_name) + "' ORDER BY SPECIAL");
    if (rs.eof())
        return;
    tabEquipment->addTab(m_specialsPage, QStringLiteral("Specials"));
    for (; !rs.eof(); rs.moveNext()) {
        auto* node = new QTreeWidgetItem(treSpecials);
        node->setText(0, SpecialText(NzString(rs.value(0)), rs.value(1), NzString(rs.value(2))));
        for (int i = 3; i <= 6; ++i) {
            const QString detail = SpecialDetailText(rs.fieldName(i), rs.value(i));
            if (!detail.isEmpty())
                (new QTreeWidgetItem(node))->setText(0, detail);
        }
        node->setExpanded(true);
    }
}

void frmEquipment::setTooltips() {
    static const char* const keys[] = {
        "CLOSE",    "EDIT",      "MANUFACTURER",  "COMMENTS", "PURCHASE_PRICE", "QUALITY",
        "SEL_AMMO", "AMMO_DPS",  "BUY_LOCATIONS", "ALLOWED",  "MANUF_FEE",      "PM_PRICE",
        "SRP",      "AMMO_NAME", "AMMO_DMG",      "AMMO_EFF"};
    QWidget* const controls[] = {cmdClose,         cmdEdit,     txtManufacturer, txtComments,
                                 txtPurchasePrice, txtQuality,  lstAmmo,         txtDamagePerSecond,
                                 lstBuyLocations,  lstAllowed,  txtManufFee,     txtPMPrice,
                                 txtSRP,           txtAmmoName, txtAmmoDamage,   txtAmmoEfficiency};
    for (int i = 0; i < 16; ++i)
        SetTip(controls[i], GetToolTip(QStringLiteral("VIEW_EQUIPMENT"), QLatin1String(keys[i]), m_name));
}
