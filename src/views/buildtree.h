#pragma once
// The build trees: what an equipment, component or raw material is made of, level by level. The
// builders add nodes through a sink, so the same trees fill the build view, the blueprint trees of
// the record views and the tests. Keys are whole paths (parent key, kind marker, name), so one thing
// used in several places gets a node in each.
#include <QHash>
#include <QList>
#include <QString>

struct TreeNodeSink {
    virtual ~TreeNodeSink() = default;
    virtual void addNode(const QString& parentKey, const QString& key, const QString& text, int image) = 0;
    // A word for what a node's picture stands for ("Drop Rate: Rare"); kept apart from the node's
    // text, which the navigation reads back as a name. Sinks without a place for it ignore it.
    virtual void setNote(const QString& key, const QString& note) {
        (void)key;
        (void)note;
    }
};

// Pictures of the build trees.
namespace buildimg {
enum : int { None = 0, Equipment = 1, Component = 2, RefinedRawMaterial = 3, Item = 4, RawMaterial = 5 };
}

// Kind markers of the node keys.
namespace marker {
inline const QString Equip = QStringLiteral("|Equip:");
inline const QString Comp = QStringLiteral("|Comp:");
inline const QString Item = QStringLiteral("|Item:");
inline const QString RawMat = QStringLiteral("|RawMat:");
} // namespace marker

// Each adds the children of parentKey for the named thing; with recurse set, every child that can
// itself be built is expanded below it, depth first. Errors are thrown (VbError) for the caller's
// handler; nodes added before the error stay. Recipes that contain themselves stop with run-time
// error 28 ("Out of stack space") once the tree is deeper than maxBuildDepth.
void BuildEquipTree(const QString& parentKey, const QString& name, TreeNodeSink& nodes, bool& recurse);
void BuildCompTree(const QString& parentKey, const QString& name, TreeNodeSink& nodes, bool& recurse);
void BuildRawMatTree(const QString& parentKey, const QString& name, TreeNodeSink& nodes, bool& recurse);
constexpr int maxBuildDepth = 200;

// Nodes as they were added, for the copy to the clipboard and for tests.
class TreeNodeList : public TreeNodeSink {
public:
    struct Node {
        QString parentKey, key, text;
        int image = 0;
        QString note;
    };
    void addNode(const QString& parentKey, const QString& key, const QString& text, int image) override;
    void setNote(const QString& key, const QString& note) override;
    const QList<Node>& nodes() const { return m_nodes; }
    int size() const { return int(m_nodes.size()); }
    const Node& at(int i) const { return m_nodes.at(i); }
    int indexOf(const QString& key) const { return m_index.value(key, -1); }
    // The node texts from the root down, joined by "\", as a tree view gives a node's full path.
    QString fullPath(int i) const;
    void clear();

private:
    QList<Node> m_nodes;
    QHash<QString, int> m_index;
};

// One line per full path, in the order given: as many tabs as the path has "\" separators, then the
// node's text, each line ended by CR LF. A text that itself holds "\" is indented deeper.
QString TreeClipboardText(const QList<QPair<QString, QString>>& pathsAndTexts);
QString TreeClipboardText(const TreeNodeList& nodes);
