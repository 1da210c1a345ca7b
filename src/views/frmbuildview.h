#pragma once
// The build view: everything that goes into making one equipment, component or raw material, as a
// tree that can be copied to the clipboard as indented text or printed.
#include <QWidget>

class QTreeWidget;
class TreeWidgetSink;

class frmBuildView : public QWidget {
    Q_OBJECT
public:
    explicit frmBuildView(QWidget* parent = nullptr);
    ~frmBuildView() override;

    // Builds the tree for the root; throws, keeping the nodes added so far.
    void build(const QString& name, const QString& kind);
    // The clipboard text of the tree: one line per node, indented by its depth.
    QString clipboardText() const;

    QTreeWidget* treBuildView = nullptr;

    void mnuEditCopy_Click();
    void mnuFilePrint_Click();

private:
    TreeWidgetSink* m_nodes = nullptr;
    QString m_root, m_kind; // for "Add to Shopping List"
};
