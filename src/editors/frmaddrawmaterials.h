#pragma once
// The raw material editor: a new raw material ("Add Raw Material") or an existing one ("Edit: " +
// name). General: name, level, price (its pop-up menu writes the reserved prices), picture, and the
// MOBs that drop it; Locations: the stations that sell it and the sectors where it is mined;
// Refined From: the raw materials and items it is made from; Used In: the components, equipment and
// raw materials made from it; Comments.
#include "editors/editorwindow.h"
#include "editors/rawmaterials.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QTabWidget;
class UBGrid;

class frmAddRawMaterials : public EditorWindow {
    Q_OBJECT
public:
    explicit frmAddRawMaterials(QWidget* parent = nullptr);

    // Fills the window from the record (empty name: a new one). False after reporting a failure.
    bool load(const QString& name);

    UBGrid* grid(const QString& widgetName) const;
    QStringList listEntries(const QListWidget* list) const;
    // The record as the widgets hold it now.
    rawmat::Fields fields() const;
    void setPicture(qint32 picture);

    QTabWidget* tabMain = nullptr;
    QLineEdit* txtName = nullptr;
    QComboBox* cmbLevel = nullptr;
    QLineEdit* txtPrice = nullptr;
    QLabel* lblPriceWord = nullptr;
    QPlainTextEdit* txtComments = nullptr;
    QListWidget *lstBuyLocations = nullptr, *lstMineLocations = nullptr;
    UBGrid *ubgMOBs = nullptr, *ubgManuComps = nullptr, *ubgManuEquip = nullptr, *ubgManuRawMats = nullptr;
    UBGrid *ubgBlueRawMats = nullptr, *ubgBlueItems = nullptr;

    void cmdPicture_Click();
    void cmdBuyLocations_Click();
    void cmdMineLocations_Click();

protected:
    SavePlan savePlan() override;
    QString savedName() const override;
    bool hasChanges() const override;

private:
    QWidget* buildGeneral();
    QWidget* buildLocations();
    QWidget* gridPage(const QStringList& widgets);
    void showPriceWord();
    void pickList(QListWidget* list, const QString& kind, const QString& sql, const QString& procedure);
    bool recordChanged() const;

    rawmat::Fields m_loaded;
    qint32 m_picture = 0;
    QString m_loadedBuy, m_loadedMine;
    QLabel* m_icon = nullptr;
    QLabel* m_title = nullptr;
    class QPushButton* m_pictureButton = nullptr;
};

// Opens the raw material editor on a record (an empty name: a new raw material).
void OpenRawMaterialEditor(const QString& name);
