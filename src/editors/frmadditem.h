#pragma once
// The item editor: a new item ("Add Item") or an existing one ("Edit: " + name). General: name,
// level, price (its pop-up menu writes the reserved prices), picture, and the MOBs that drop it;
// Used In: the equipment, components and raw materials made with it; Where to Buy: the stations that
// sell it; Comments. The record is written through an updatable result set.
#include "editors/editorwindow.h"
#include "editors/items.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QTabWidget;
class UBGrid;

class frmAddItem : public EditorWindow {
    Q_OBJECT
public:
    explicit frmAddItem(QWidget* parent = nullptr);

    // Fills the window from the record (empty name: a new one). False after reporting a failure.
    bool load(const QString& name);

    UBGrid* grid(const QString& widgetName) const;
    item::Fields fields() const;
    void setPicture(qint32 picture);

    QTabWidget* tabMain = nullptr;
    QLineEdit* txtName = nullptr;
    QComboBox* cmbLevel = nullptr;
    QLineEdit* txtPrice = nullptr;
    QLabel* lblPriceWord = nullptr;
    QPlainTextEdit* txtComments = nullptr;
    QListWidget* lstBuyLocations = nullptr;
    UBGrid *ubgMOBs = nullptr, *ubgManuEquip = nullptr, *ubgManuComps = nullptr, *ubgManuRawMats = nullptr;

    void cmdPicture_Click();
    void cmdBuyLocations_Click();

protected:
    SavePlan savePlan() override;
    QString savedName() const override;
    bool hasChanges() const override;

private:
    QWidget* buildGeneral();
    bool recordChanged() const;

    item::Fields m_loaded;
    qint32 m_picture = 0;
    QString m_loadedBuy;
    QLabel* m_icon = nullptr;
    QLabel* m_title = nullptr;
    QLabel* m_typeLine = nullptr;
    QPushButton* m_pictureButton = nullptr;
};

// Opens the item editor on a record (an empty name: a new item).
void OpenItemEditor(const QString& name);
