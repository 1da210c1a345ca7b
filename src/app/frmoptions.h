#pragma once
// The options window (File > Options): the custom equipment fields of the database, game
// interaction with its folder, the price mark-up and the personal options of the settings store.
#include <QDialog>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QLineEdit;
class QPushButton;
class clsVLInterface;

class frmOptions : public QDialog {
    Q_OBJECT
public:
    explicit frmOptions(QWidget* parent = nullptr);
    ~frmOptions() override;

    // The widgets fill from the settings store and the database's custom fields.
    void LoadOptions();

    // Asks before game interaction is switched on; No unticks it again.
    void chkInteractWithGame_Click();
    // The folder chooser: a folder holding the game executable "v&l.exe" goes into txtVLPath.
    void cmdSelectFolder_Click();
    // Checks the custom captions, then saves everything; true when saved (the window then closes).
    bool cmdApply_Click();
    // Deletes the program's whole branch of the settings store after asking.
    void cmdResetRegVals_Click();
    void cmdCancel_Click();

    QCheckBox* chkCustomFieldsOn = nullptr;
    QLineEdit* txtCF01 = nullptr;
    QLineEdit* txtCF02 = nullptr;
    QLineEdit* txtCF03 = nullptr;
    QCheckBox* chkInteractWithGame = nullptr;
    QLineEdit* txtVLPath = nullptr;
    QPushButton* cmdSelectFolder = nullptr;
    QDoubleSpinBox* txtMarkup = nullptr; // percent
    QCheckBox* chkReportErrorMsgs = nullptr;
    QCheckBox* chkToolTips = nullptr;
    QComboBox* cmbDblClick = nullptr;
    QCheckBox* chkUseVLNCursor = nullptr;
    QCheckBox* chkPreloadImages = nullptr;
    QCheckBox* chkPrintPreview = nullptr;
    QCheckBox* chkBackground = nullptr;
    QPushButton* cmdApply = nullptr;
    QPushButton* cmdCancel = nullptr;
    QPushButton* cmdResetRegVals = nullptr;

private:
    void buildWidgets();
    void setToolTips();
    bool saveDatabaseOptions(bool on, const QString (&captions)[3]);
};

// The choices of cmbDblClick, by the number kept in "DoubleClickEvent".
namespace dblclick {
constexpr int View = 0;
constexpr int Editor = 1;
} // namespace dblclick

// The game folder test: the folder holds "v&l.exe" (in any case, as Wine may have left it).
bool IsGameFolder(const QString& folder);

// The program's one game channel, made when the main window is wired; nullptr before and after.
clsVLInterface* gameChannel();
void setGameChannel(clsVLInterface* channel);
