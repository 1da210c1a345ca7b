#pragma once
// The lookup-table editor: the values behind a drop-down list (specials, damage types, manufacturers,
// component types and subtypes, ammunition types), with Add and Delete. A value still used by a
// record cannot be deleted ("Record in Use"). Its error reports name "Form frmSpecialsDialog".
//
//   DisplayListEditDialog(lookup::specials(), this);   // then read the list's values again
#include "editors/lookups.h"

#include <QDialog>

class QLabel;
class QListWidget;
class QPushButton;

class frmListEditDialog : public QDialog {
    Q_OBJECT
public:
    explicit frmListEditDialog(const LookupTable& lookup, QWidget* parent = nullptr);

    // Reads the values again; reports a failure and leaves the list empty.
    void refill();
    void cmdAddItem_Click();
    void cmdDeleteItem_Click();
    // Something was added or deleted since the dialog opened.
    bool changed() const { return m_changed; }

    QLabel* lblList = nullptr;
    QListWidget* lstSpecials = nullptr;
    QPushButton *cmdAddItem = nullptr, *cmdDeleteItem = nullptr, *cmdClose = nullptr;

private:
    void select(const QString& value);
    LookupTable m_lookup;
    bool m_changed = false;
};

// Shows the editor modally; true when the table was changed.
bool DisplayListEditDialog(const LookupTable& lookup, QWidget* parent = nullptr);
