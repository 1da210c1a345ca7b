#pragma once
// The location form of the map window: adds a location to the sector shown, or changes one. Its
// position is typed, or taken from a click on the map while the form is open; the map shows where it
// will go. Save checks and writes in one transaction and closes the form; a refused or failed save
// keeps it open with what was typed.
#include "maps/locations.h"

#include <QPointF>
#include <QWidget>

class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

class frmAddLocation : public QWidget {
    Q_OBJECT
public:
    explicit frmAddLocation(QWidget* parent = nullptr);

    // A new location of the sector; at is its first position when given.
    void startAdd(const QString& sector, const QPointF* at = nullptr);
    // The location as it is now.
    void startEdit(const NavPoint& point);
    bool editing() const { return m_editing; }
    QString sector() const { return m_sector; }

    // A position picked on the map.
    void setPosition(const QPointF& world);
    // The position and kind as typed so far; false while a coordinate is not a number.
    bool currentPosition(QPointF* world) const;
    NavKind currentKind() const;

    // Checks and writes; true when the location was saved (the form then closes) or nothing changed.
    bool cmdSave_Click();

    QLabel* lblSector = nullptr;
    QLineEdit* txtName = nullptr;
    QComboBox* cmbType = nullptr;
    QLineEdit* txtX = nullptr;
    QLineEdit* txtY = nullptr;
    QPlainTextEdit* txtComments = nullptr;
    QPushButton* cmdSave = nullptr;
    QPushButton* cmdCancel = nullptr;

Q_SIGNALS:
    void saved(const QString& sector, const QString& name);
    // The position or type was changed: where the map shows the location being placed.
    void placementChanged();

private:
    void fillTypes(const QString& keep);

    QString m_sector;
    bool m_editing = false;
    NavPoint m_original;
};
