#pragma once
// The widgets the component, item and station editors are built from, each made the way the raw
// material editor makes its own: the name and level boxes, a price box with the word of its reserved
// number and the pop-up menu that writes them, the picture button, a titled list with its Change...
// button, a page of grids as sub-tabs, and the boxes that refuse a save before anything is written.
#include "editors/griddef.h"
#include "editors/propertylist.h"

#include <QList>
#include <QString>
#include <QStringList>

class QComboBox;
class QGroupBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QTabWidget;
class QWidget;

QLineEdit* NewNameBox(QWidget* parent);
// An editable list of the levels 1 to 60 that takes whole numbers; FillLevels adds the record's own
// level when it is higher and shows it.
QComboBox* NewLevelBox(QWidget* parent);
void FillLevels(QComboBox* box, const QString& level);

// A whole-number box with the word of its reserved number beside it ("Loot Only" for -1) and a pop-up
// menu that writes the reserved numbers of its kind.
struct PriceField {
    QLineEdit* box = nullptr;
    QLabel* word = nullptr;
    QHBoxLayout* row = nullptr;
};
PriceField NewPriceField(QWidget* parent, const QString& boxName, const QString& wordName, PriceWords kind);

QPushButton* NewPictureButton(QWidget* parent);
// Shows the picture on the button (with its number) and in the window's head.
void ShowPicture(QPushButton* button, QLabel* headIcon, qint32 picture);

// A titled list of names with a Change... button under it; a double click changes it too. Unless
// counted is false, the title carries the number of entries.
struct PickListBox {
    QGroupBox* box = nullptr;
    QListWidget* list = nullptr;
    QPushButton* change = nullptr;
};
PickListBox NewPickListBox(QWidget* parent, const QString& title, const QString& listName,
                           const QString& buttonName, bool counted = true);
// Shows the pick dialog for the list with every value of sql to choose from; a failure to read them
// is reported under the procedure and container given.
void PickInto(QListWidget* list, const QString& kind, const QString& sql, const QString& procedure,
              const QString& container);

// The grids of the widgets named, each on a sub-tab captioned with its definition's caption and,
// unless counted is false, the number of its rows ("Items (2)"), kept up to date as rows come and go.
QTabWidget* NewGridTabs(const QList<GridDef>& defs, const QStringList& widgets, bool counted = true);
QPlainTextEdit* NewCommentsBox(QWidget* parent);
QLabel* BuddyLabel(const QString& text, QWidget* buddy, QWidget* parent);
