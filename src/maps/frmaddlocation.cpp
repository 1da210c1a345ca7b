#include "maps/frmaddlocation.h"

#include "data/errorreport.h"
#include "maps/locationedit.h"
#include "maps/mapgrid.h"
#include "maps/navicons.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace {
const QString kForm = QStringLiteral("Form frmAddLocation");
}

frmAddLocation::frmAddLocation(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("frmAddLocation"));
    setWindowFlags(Qt::Tool);
    setAttribute(Qt::WA_DeleteOnClose);
    auto* top = new QVBoxLayout(this);
    auto* form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    lblSector = new QLabel(this);
    lblSector->setObjectName(QStringLiteral("lblSector"));
    form->addRow(QStringLiteral("Sector:"), lblSector);
    txtName = new QLineEdit(this);
    txtName->setObjectName(QStringLiteral("txtName"));
    txtName->setMaxLength(100);
    form->addRow(QStringLiteral("&Name:"), txtName);
    cmbType = new QComboBox(this);
    cmbType->setObjectName(QStringLiteral("cmbType"));
    cmbType->setIconSize(QSize(20, 20));
    form->addRow(QStringLiteral("&Type:"), cmbType);

    auto* position = new QHBoxLayout;
    txtX = new QLineEdit(this);
    txtX->setObjectName(QStringLiteral("txtX"));
    txtY = new QLineEdit(this);
    txtY->setObjectName(QStringLiteral("txtY"));
    for (QLineEdit* box : {txtX, txtY}) {
        box->setAlignment(Qt::AlignRight);
        box->setMinimumWidth(box->fontMetrics().horizontalAdvance(QStringLiteral("-00000000.00")) + 12);
    }
    auto* xLabel = new QLabel(QStringLiteral("&X"), this);
    xLabel->setBuddy(txtX);
    auto* yLabel = new QLabel(QStringLiteral("&Y"), this);
    yLabel->setBuddy(txtY);
    position->addWidget(xLabel);
    position->addWidget(txtX, 1);
    position->addSpacing(8);
    position->addWidget(yLabel);
    position->addWidget(txtY, 1);
    form->addRow(QStringLiteral("Position:"), position);
    auto* hint =
        new QLabel(QStringLiteral("Type the coordinates, or click the map where the location is."), this);
    hint->setObjectName(QStringLiteral("lblHint"));
    hint->setWordWrap(true);
    QPalette pal = hint->palette();
    pal.setColor(QPalette::WindowText, pal.color(QPalette::PlaceholderText));
    hint->setPalette(pal);
    form->addRow(QString(), hint);
    txtComments = new QPlainTextEdit(this);
    txtComments->setObjectName(QStringLiteral("txtComments"));
    txtComments->setTabChangesFocus(true);
    txtComments->setMinimumHeight(txtComments->fontMetrics().lineSpacing() * 4);
    form->addRow(QStringLiteral("&Comments:"), txtComments);
    top->addLayout(form, 1);

    auto* buttons = new QDialogButtonBox(this);
    cmdSave = buttons->addButton(QStringLiteral("&Save"), QDialogButtonBox::AcceptRole);
    cmdSave->setObjectName(QStringLiteral("cmdSave"));
    cmdSave->setDefault(true);
    cmdCancel = buttons->addButton(QStringLiteral("Cancel"), QDialogButtonBox::RejectRole);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    top->addWidget(buttons);
    connect(cmdSave, &QPushButton::clicked, this, [this] { cmdSave_Click(); });
    connect(cmdCancel, &QPushButton::clicked, this, &QWidget::close);
    connect(txtX, &QLineEdit::textEdited, this, &frmAddLocation::placementChanged);
    connect(txtY, &QLineEdit::textEdited, this, &frmAddLocation::placementChanged);
    connect(cmbType, &QComboBox::currentIndexChanged, this, &frmAddLocation::placementChanged);
    resize(380, 300);
}

void frmAddLocation::fillTypes(const QString& keep) {
    cmbType->blockSignals(true);
    cmbType->clear();
    QStringList types;
    try {
        types = MapNavTypes();
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("fillTypes"), kForm);
    }
    if (types.isEmpty())
        types = NavTypeWords();
    // A type the lookup list no longer holds stays choosable for the location that has it.
    if (!keep.isEmpty() && !types.contains(keep, Qt::CaseInsensitive))
        types << keep;
    for (const QString& t : types)
        cmbType->addItem(NavIcon(NavKindOf(t)), t);
    const int at = keep.isEmpty() ? cmbType->findText(QStringLiteral("Navigation Point"))
                                  : cmbType->findText(keep, Qt::MatchFixedString);
    cmbType->setCurrentIndex(std::max(0, at));
    cmbType->blockSignals(false);
}

void frmAddLocation::startAdd(const QString& sector, const QPointF* at) {
    m_sector = sector;
    m_editing = false;
    m_original = NavPoint();
    setWindowTitle(QStringLiteral("Add Location"));
    lblSector->setText(sector);
    txtName->clear();
    fillTypes(QString());
    txtX->clear();
    txtY->clear();
    if (at)
        setPosition(*at);
    txtComments->clear();
    txtName->setFocus();
}

void frmAddLocation::startEdit(const NavPoint& point) {
    m_sector = point.sector;
    m_editing = true;
    m_original = point;
    setWindowTitle(QStringLiteral("Edit Location"));
    lblSector->setText(point.sector);
    txtName->setText(point.name);
    fillTypes(point.type);
    txtX->setText(CoordinateText(point.x));
    txtY->setText(CoordinateText(point.y));
    txtComments->setPlainText(point.comments);
    txtName->setFocus();
    txtName->selectAll();
}

void frmAddLocation::setPosition(const QPointF& world) {
    // Whole units are as close as a player can aim with the pointer.
    txtX->setText(CoordinateText(std::round(world.x())));
    txtY->setText(CoordinateText(std::round(world.y())));
    Q_EMIT placementChanged();
}

bool frmAddLocation::currentPosition(QPointF* world) const {
    double x = 0, y = 0;
    if (!ParseCoordinate(txtX->text(), &x) || !ParseCoordinate(txtY->text(), &y))
        return false;
    *world = QPointF(x, y);
    return true;
}

NavKind frmAddLocation::currentKind() const {
    return NavKindOf(cmbType->currentText());
}

bool frmAddLocation::cmdSave_Click() {
    NavPoint point;
    if (!CheckLocation({m_sector, txtName->text(), cmbType->currentText(), txtX->text(), txtY->text(),
                        txtComments->toPlainText()},
                       &point))
        return false;
    try {
        if (m_editing) {
            if (UpdateLocation(m_original, point) == SaveResult::NothingChanged) {
                close();
                return true;
            }
        } else {
            AddLocation(point);
        }
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("cmdSave_Click"), kForm);
        return false;
    }
    Q_EMIT saved(point.sector, point.name);
    close();
    return true;
}
