#pragma once
// The MOB view: one hostile creature with its figures and temperament, and the trees of what it
// attacks with and resists, where it spawns and what it drops. A new window on every request.
#include <QWidget>

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QTabWidget;
class QTreeWidget;
class TreeWidgetSink;

class frmMOBs : public QWidget {
    Q_OBJECT
public:
    explicit frmMOBs(QWidget* parent = nullptr);
    ~frmMOBs() override;

    // Reads the MOB's row and fills the fields; throws when it cannot.
    void loadFields(const QString& name);
    // Each reports its own errors and keeps the nodes added before one.
    void PopulateTacticalTree(const QString& name);
    void PopulateSpawnTree(const QString& name);
    void PopulateLootTree(const QString& name);

    QLabel* lblName = nullptr;
    QLabel* lblType = nullptr;
    QTabWidget* tabMOBData = nullptr;
    QLineEdit *txtFaction = nullptr, *txtLevel = nullptr, *txtShield = nullptr, *txtHull = nullptr,
              *txtMass = nullptr, *txtSignature = nullptr, *txtScanRange = nullptr, *txtAggroRange = nullptr,
              *txtBravery = nullptr, *txtAggressiveness = nullptr, *txtAltruism = nullptr,
              *txtInteligence = nullptr, *txtLastUpdated = nullptr;
    QPlainTextEdit* txtComments = nullptr;
    QTreeWidget *treTactical = nullptr, *treSpawn = nullptr, *treLoot = nullptr;
    QPushButton *cmdEdit = nullptr, *cmdClose = nullptr;

private:
    QString m_name;
    TreeWidgetSink *m_tactical = nullptr, *m_spawn = nullptr, *m_loot = nullptr;
};
