#pragma once
// What the component, item and raw material editors have in common: a header with the record's
// picture and name, a General page (name, level, price, picture and the MOBs that drop it), lists of
// names rewritten by the save (the stations that sell it...), the relationship grids, a Comments tab
// last, and the load, the question before closing and the save built on those.
//
// A window derives from it, adds its tabs between buildGeneral() and finishTabs(), registers its lists
// with addSavedList (buildBuyPage does for the stations), and in load() reads its record through
// readRecord and shows it with showRecord. Its savePlan starts from planSave and adds its own checks
// and the record's write.
#include "editors/editorwindow.h"
#include "editors/recordsql.h"

#include <functional>

class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QTabWidget;
class QVBoxLayout;

class CatalogueEditor : public EditorWindow {
    Q_OBJECT
public:
    QTabWidget* tabMain = nullptr;
    QLineEdit* txtName = nullptr;
    QComboBox* cmbLevel = nullptr;
    QLineEdit* txtPrice = nullptr;
    QLabel* lblPriceWord = nullptr;
    QPlainTextEdit* txtComments = nullptr;
    QListWidget* lstBuyLocations = nullptr;
    UBGrid* ubgMOBs = nullptr;

    void setPicture(qint32 picture);
    void cmdPicture_Click();
    void cmdBuyLocations_Click();

protected:
    // container: the error reports' container ("Form frmAddComponent"); typeWord: the header's line
    // under the name until the record says more ("Component"); grids: the window's grid definitions.
    CatalogueEditor(const QString& objectName, const QString& kind, const QString& container,
                    const QString& typeWord, const QList<GridDef>& grids, QWidget* parent);

    // The General page. Rows a window adds of its own come after the level and after the price.
    using Rows = std::function<void(QWidget* page, QFormLayout* form)>;
    QWidget* buildGeneral(const Rows& afterLevel = {}, const Rows& afterPrice = {});
    // The Where to Buy page: the stations that sell the record, rewritten into table.
    using LoadSql = std::function<QString(const QString& name)>;
    QWidget* buildBuyPage(const LoadSql& loadSql, const QString& table, const QString& keyColumn);
    // The Comments tab and the Save and Cancel buttons.
    void finishTabs();

    // A list whose entries are read with loadSql and rewritten by the save into table (keyColumn:
    // the record's name, valueColumn: the entry), where the write order names the list's widget.
    void addSavedList(QListWidget* list, const LoadSql& loadSql, const QString& table,
                      const QString& keyColumn, const QString& valueColumn);

    // The record of that name (or a new one at level 1 when the name is empty), the window captioned
    // for it; a stored record's name is read-only here and its lists are filled. Throws VbError.
    template <typename Fields>
    Fields readRecord(const QString& newCaption, const QString& name, Fields (*read)(const QString&)) {
        Fields f;
        if (name.isEmpty())
            f.level = QStringLiteral("1");
        else
            f = read(name);
        openRecord(newCaption, f.name);
        return f;
    }
    // Shows the record as loaded and fills its grids; what is shown now is what a save compares with.
    void showRecord(const PricedFields& loaded);

    PricedFields pricedFields() const;
    // Whether the record's own values differ from those loaded (a new record: once it has a name).
    virtual bool recordChanged() const;
    bool hasChanges() const override;
    QString savedName() const override;
    // The container, the grid checks, and the rewrites of the lists and grids in the order given.
    SavePlan planSave(const QStringList& writeOrder, const QString& name) const;

    QString container() const { return m_container; }
    QLabel* m_icon = nullptr;
    QLabel* m_title = nullptr;
    QLabel* m_typeLine = nullptr;
    QPushButton* m_pictureButton = nullptr;

private:
    struct SavedList {
        QListWidget* list = nullptr;
        LoadSql loadSql;
        QString table, keyColumn, valueColumn;
        QString loaded;
    };
    void openRecord(const QString& newCaption, const QString& storedName);

    QString m_container;
    const QList<GridDef>& m_grids;
    QVBoxLayout* m_top = nullptr;
    qint32 m_picture = 0;
    PricedFields m_loadedFields;
    QList<SavedList> m_lists;
};
