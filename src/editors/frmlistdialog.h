#pragma once
// The pick dialogs of the editors' plain lists (stations that sell a record, sectors where it is
// mined, classes allowed to use an equipment) and the check-list dialog.
//
//   DisplayListDialog("Stations", allStations, lstBuyLocations);
// shows the values not yet chosen on the left and the chosen ones on the right; OK replaces the
// editor's list by the chosen values, Cancel changes nothing. The editor's save writes them later.
#include <QDialog>
#include <QStringList>

class QLabel;
class QListWidget;
class QPushButton;

class frmListDialog : public QDialog {
    Q_OBJECT
public:
    // kind: the plural shown in the texts ("Stations"). A value is in one list only: the available
    // list leaves out the selected values (without regard to letter case).
    frmListDialog(const QString& kind, const QStringList& available, const QStringList& selected,
                  QWidget* parent = nullptr);

    QStringList selectedValues() const;
    QStringList availableValues() const;

    void cmdAdd_Click();
    void cmdAddAll_Click();
    void cmdRemove_Click();
    void cmdRemoveAll_Click();

    QLabel *lblAvailable = nullptr, *lblSelected = nullptr;
    QListWidget *lstAvailable = nullptr, *lstSelected = nullptr;
    QPushButton *cmdAdd = nullptr, *cmdAddAll = nullptr, *cmdRemove = nullptr, *cmdRemoveAll = nullptr;
    QPushButton *cmdOK = nullptr, *cmdCancel = nullptr;

private:
    void move(QListWidget* from, QListWidget* to, bool all);
    void updateButtons();
};

// True when the user chose OK; the list widget then holds the selected values.
bool DisplayListDialog(const QString& kind, const QStringList& available, QListWidget* selected);

// A list with check boxes: OK returns the checked values in *checked (in the list's order).
class frmCheckListDialog : public QDialog {
    Q_OBJECT
public:
    frmCheckListDialog(const QString& title, const QString& caption, const QStringList& values,
                       const QStringList& checked, QWidget* parent = nullptr);
    QStringList checkedValues() const;

    QListWidget* lstValues = nullptr;
    QPushButton *cmdAll = nullptr, *cmdNone = nullptr, *cmdOK = nullptr, *cmdCancel = nullptr;
};

bool DisplayCheckListDialog(const QString& title, const QString& caption, const QStringList& values,
                            QStringList* checked, QWidget* parent = nullptr);
