#pragma once
// The program's one main window: categories, filters, the record list, status bar and menus.
#include <QMainWindow>

class frmMain : public QMainWindow {
    Q_OBJECT
public:
    // Construction is the window's load: it reads the settings and fills the lists, without showing.
    explicit frmMain(QWidget* parent = nullptr);
    ~frmMain() override;

    // Makes sure that at least one game character is recorded.
    void CheckCharacters();
    void RefreshGrid();

private:
    struct Impl;
    Impl* d = nullptr;
};

// The main window while it exists (the owner of the splash and of the views), else nullptr.
frmMain* mainWindow();
