#pragma once
// The property list on screen (prpList, prpMOB): the rows of a PropertyList under their category rows,
// the value column editable with the editor that fits each row (text, whole or decimal number, yes/no,
// date, a choice list), changed values in bold, and the selected row's help text below the list.
// Delete clears a value (it is written as NULL); the pop-up menu of a price or cost row writes the
// reserved numbers ("Mission Reward" -2, "Loot Only" -1, "Unknown" 0; "Not Manufacturable" -1).
//
//   auto* prp = new PropertyListWidget("prpList", page);
//   ...fill prp->list()...; prp->rebuild();
#include "editors/propertylist.h"

#include <QWidget>

class QLabel;
class QTreeWidget;
class QTreeWidgetItem;

class PropertyListWidget : public QWidget {
    Q_OBJECT
public:
    explicit PropertyListWidget(const QString& name, QWidget* parent = nullptr);
    ~PropertyListWidget() override;

    PropertyList& list() { return m_list; }
    const PropertyList& list() const { return m_list; }
    // Shows the list's rows again (after rows were added or removed).
    void rebuild();

    QTreeWidget* tree() const { return m_tree; }
    QLabel* helpPane() const { return m_help; }
    QTreeWidgetItem* itemFor(const QString& key) const;
    // The text shown in the value column of a row.
    QString shownValue(const QString& key) const;

    // The user's edit of a row, as the editors in the list make it: a refused value is explained in
    // a box and changes nothing. True when the value was taken.
    bool editValue(const QString& key, const QString& value);
    // Opens the lookup editor of a row that has one, then takes the table's values as its choices.
    void editLookup(const QString& key);

Q_SIGNALS:
    void valueChanged(const QString& key);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showRow(int index);
    void showHelp();
    void popupMenu(const QPoint& pos);

    PropertyList m_list;
    QTreeWidget* m_tree = nullptr;
    QLabel* m_help = nullptr;
    bool m_dying = false;
};
