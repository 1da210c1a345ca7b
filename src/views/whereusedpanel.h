#pragma once
// The "Where Used" page of the record views: the recipes that call for the record and, through them,
// every record that needs it up the chains, with how many of it one of each takes. Read the first
// time the page is shown, so that opening a view stays as quick as it was.
#include "views/billofmaterials.h"

#include <QWidget>

class QLabel;
class QPushButton;
class QTabWidget;
class QTreeWidget;

class WhereUsedPanel : public QWidget {
    Q_OBJECT
public:
    WhereUsedPanel(bom::Kind kind, const QString& name, QWidget* parent = nullptr);

    // Reads and fills the page (once); errors go to the reporter and leave the page empty.
    void load();
    bool loaded() const { return m_loaded; }

    QLabel* lblSummary = nullptr;
    QTreeWidget* treWhereUsed = nullptr;
    QPushButton* cmdAddToList = nullptr;

protected:
    void showEvent(QShowEvent* event) override;

private:
    bom::Kind m_kind;
    QString m_name;
    bool m_loaded = false;
};

// Adds the page to a record window's tabs.
WhereUsedPanel* AddWhereUsedTab(QTabWidget* tabs, bom::Kind kind, const QString& name);
