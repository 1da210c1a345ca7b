#include "views/buildtree.h"

#include "data/errorreport.h"
#include "data/quotes.h"
#include "data/recordset.h"
#include "views/equiptypes.h"
#include "views/modmain.h"

namespace {
struct Row {
    QString name, level, amount;
};

// The rows of one group, read whole and closed before any child is built, so that the deeper
// levels can reuse the same prepared statements.
QList<Row> readRows(const QString& sql, bool withAmount) {
    QList<Row> rows;
    Recordset rs;
    rs.open(sql);
    for (; !rs.eof(); rs.moveNext())
        rows.append(
            {NzString(rs.value(0)), NzString(rs.value(1)), withAmount ? NzString(rs.value(2)) : QString()});
    rs.close();
    return rows;
}

// Guards the recursion: recipe data that contains itself would otherwise never end.
class DepthGuard {
public:
    DepthGuard() {
        if (++s_depth > maxBuildDepth) {
            --s_depth;
            throw VbError(vberr::OutOfStackSpace, QStringLiteral("Out of stack space"));
        }
    }
    ~DepthGuard() { --s_depth; }

private:
    static inline int s_depth = 0;
};

// One read transaction around a whole tree: the tree reads one consistent state of the file, and
// the file is locked once instead of once for every one of its many small statements.
class ReadTransaction {
public:
    ReadTransaction() : m_mine(db().isOpen() && !db().inTransaction()) {
        if (m_mine)
            db().beginTrans();
    }
    ~ReadTransaction() {
        if (!m_mine || !db().inTransaction())
            return;
        try {
            db().commitTrans(); // nothing was written
        } catch (const VbError&) {
            db().clearErrors();
        }
    }
    ReadTransaction(const ReadTransaction&) = delete;
    ReadTransaction& operator=(const ReadTransaction&) = delete;

private:
    bool m_mine;
};

QString levelText(const Row& r) {
    return r.name + " (L" + r.level + ")" + r.amount;
}

// Equipment rows: the type sits inside the level bracket, and "(Upgrade)" or the amount comes last.
void addEquipRows(const QString& parentKey, const QList<Row>& rows, bool upgrades, TreeNodeSink& nodes,
                  bool& recurse) {
    for (const Row& r : rows) {
        const QString key = parentKey + marker::Equip + r.name;
        nodes.addNode(parentKey, key,
                      r.name + " (L" + r.level + " " + DeEnumerate(FindType(r.name)) + ")" +
                          (upgrades ? QStringLiteral(" (Upgrade)") : r.amount),
                      buildimg::Equipment);
        if (recurse)
            BuildEquipTree(key, r.name, nodes, recurse);
    }
}

using Builder = void (*)(const QString& parentKey, const QString& name, TreeNodeSink& nodes, bool& recurse);

// One group of rows shown with their levels and amounts; with a builder, each row is built further
// down when recurse is set.
void addLevelRows(const QString& parentKey, const QList<Row>& rows, const QString& mark, int image,
                  TreeNodeSink& nodes, bool& recurse, Builder below = nullptr) {
    for (const Row& r : rows) {
        const QString key = parentKey + mark + r.name;
        nodes.addNode(parentKey, key, levelText(r), image);
        if (below && recurse)
            below(key, r.name, nodes, recurse);
    }
}

QStringList readNames(const QString& sql) {
    Recordset rs;
    rs.open(sql);
    QStringList names = PopulateList(rs);
    rs.close();
    return names;
}

// What a raw material is made from. The same two statements tell whether it is refined (its
// picture), so each raw material node reads them once for both.
struct RawRecipe {
    QStringList sources, items;
    int image() const {
        return sources.isEmpty() && items.isEmpty() ? buildimg::RawMaterial : buildimg::RefinedRawMaterial;
    }
};

RawRecipe readRawRecipe(const QString& quotedName) {
    return {readNames("SELECT REFINES_FROM FROM RAW_MATERIALS_REFINES_FROM WHERE RAW_MATERIAL_NAME = '" +
                      quotedName + "' ORDER BY REFINES_FROM"),
            readNames("SELECT ITEM_NAME FROM RAW_MATERIALS_ITEMS WHERE RAW_MATERIAL_NAME = '" + quotedName +
                      "' ORDER BY ITEM_NAME")};
}

void buildRawFrom(const QString& parentKey, const QString& name, const RawRecipe& recipe, TreeNodeSink& nodes,
                  bool& recurse);

// Adds a raw material node and, with recurse set, what it is refined from below it.
void addRawNode(const QString& parentKey, const QString& key, const QString& text, const QString& name,
                TreeNodeSink& nodes, bool& recurse) {
    RawRecipe recipe;
    try {
        recipe = readRawRecipe(FixQuotes(name));
    } catch (const VbError& e) {
        // The picture's test reports on its own and the node is still shown, as a plain raw material;
        // building below it then meets the same failure and ends the tree.
        ReportDBError(e, QStringLiteral("IsRefined"), QStringLiteral("Module modMain"));
        nodes.addNode(parentKey, key, text, buildimg::RawMaterial);
        if (recurse)
            BuildRawMatTree(key, name, nodes, recurse);
        return;
    }
    nodes.addNode(parentKey, key, text, recipe.image());
    if (recurse)
        buildRawFrom(key, name, recipe, nodes, recurse);
}
} // namespace

void BuildEquipTree(const QString& parentKey, const QString& name, TreeNodeSink& nodes, bool& recurse) {
    ReadTransaction reading;
    DepthGuard guard;
    const QString e = FixQuotes(name);

    const QList<Row> upgrades = readRows(
        "SELECT EQUIPMENTS_UPGRADE_FROM.UPGRADE_FROM, LVL FROM EQUIPMENTS_UPGRADE_FROM, EQUIPMENTS WHERE "
        "EQUIPMENTS_UPGRADE_FROM.EQUIPMENT_NAME = '" +
            e +
            "' AND EQUIPMENTS.EQUIPMENT_NAME = "
            "EQUIPMENTS_UPGRADE_FROM.UPGRADE_FROM ORDER BY EQUIPMENTS_UPGRADE_FROM.UPGRADE_FROM",
        false);
    addEquipRows(parentKey, upgrades, true, nodes, recurse);

    const QList<Row> comps = readRows(
        "SELECT EQUIPMENTS_COMPONENTS.COMPONENTS_COMPONENT, COMPONENTS.LVL, IIF(EQUIPMENTS_COMPONENTS.AMOUNT>1,' x' & "
        "EQUIPMENTS_COMPONENTS.AMOUNT,'') FROM EQUIPMENTS_COMPONENTS, COMPONENTS WHERE "
        "EQUIPMENTS_COMPONENTS.EQUIPMENTS_EQUIPMENT = '" +
            e +
            "' AND EQUIPMENTS_COMPONENTS.COMPONENTS_COMPONENT = "
            "COMPONENTS.COMPONENT_NAME ORDER BY COMPONENTS_COMPONENT",
        true);
    addLevelRows(parentKey, comps, marker::Comp, buildimg::Component, nodes, recurse, &BuildCompTree);

    const QList<Row> items = readRows(
        "SELECT EQUIPMENTS_ITEMS.ITEM_NAME, ITEMS.LVL, IIF(EQUIPMENTS_ITEMS.AMOUNT > 1, ' x' & EQUIPMENTS_ITEMS.AMOUNT) "
        "FROM EQUIPMENTS_ITEMS, ITEMS WHERE EQUIPMENTS_ITEMS.EQUIPMENTS_EQUIPMENT = '" +
            e +
            "' AND "
            "EQUIPMENTS_ITEMS.ITEM_NAME = ITEMS.ITEM_NAME ORDER BY EQUIPMENTS_ITEMS.ITEM_NAME",
        true);
    addLevelRows(parentKey, items, marker::Item, buildimg::Item, nodes, recurse);

    const QList<Row> raws = readRows(
        "SELECT EQUIPMENTS_RAW_MATERIALS.RAW_MATERIAL_NAME, RAW_MATERIALS.LVL, IIF(EQUIPMENTS_RAW_MATERIALS.AMOUNT > 1, "
        "' x' & EQUIPMENTS_RAW_MATERIALS.AMOUNT) FROM EQUIPMENTS_RAW_MATERIALS, RAW_MATERIALS WHERE "
        "EQUIPMENTS_RAW_MATERIALS.EQUIPMENTS_EQUIPMENT = '" +
            e +
            "' AND EQUIPMENTS_RAW_MATERIALS.RAW_MATERIAL_NAME = "
            "RAW_MATERIALS.RAW_MATERIAL_NAME ORDER BY EQUIPMENTS_RAW_MATERIALS.RAW_MATERIAL_NAME",
        true);
    for (const Row& r : raws)
        addRawNode(parentKey, parentKey + marker::RawMat + r.name, levelText(r), r.name, nodes, recurse);
}

void BuildCompTree(const QString& parentKey, const QString& name, TreeNodeSink& nodes, bool& recurse) {
    ReadTransaction reading;
    DepthGuard guard;
    const QString c = FixQuotes(name);

    const QList<Row> raws = readRows(
        "SELECT COMPONENTS_RAW_MATERIALS.RAW_MATERIAL, RAW_MATERIALS.LVL, IIF(COMPONENTS_RAW_MATERIALS.AMOUNT > 1, ' x' & "
        "COMPONENTS_RAW_MATERIALS.AMOUNT,'') FROM COMPONENTS_RAW_MATERIALS, RAW_MATERIALS WHERE COMPONENTS_COMPONENT = '" +
            c +
            "' AND RAW_MATERIALS.RAW_MATERIAL_NAME = COMPONENTS_RAW_MATERIALS.RAW_MATERIAL ORDER BY RAW_MATERIAL",
        true);
    for (const Row& r : raws)
        addRawNode(parentKey, parentKey + marker::RawMat + r.name, levelText(r), r.name, nodes, recurse);

    const QList<Row> equips = readRows(
        "SELECT COMPONENTS_EQUIPMENTS.EQUIPMENT_NAME, EQUIPMENTS.LVL, IIF(COMPONENTS_EQUIPMENTS.AMOUNT > 1,' x' & "
        "COMPONENTS_EQUIPMENTS.AMOUNT,'') FROM COMPONENTS_EQUIPMENTS, EQUIPMENTS WHERE COMPONENTS_EQUIPMENTS.COMPONENT_NAME = '" +
            c +
            "' AND EQUIPMENTS.EQUIPMENT_NAME = COMPONENTS_EQUIPMENTS.EQUIPMENT_NAME ORDER BY "
            "COMPONENTS_EQUIPMENTS.EQUIPMENT_NAME",
        true);
    addEquipRows(parentKey, equips, false, nodes, recurse);

    // The level here is the built component's own, not the source's: every upgrade source shows it.
    const QList<Row> upgrades = readRows(
        "SELECT COMPONENTS_UPGRADE_FROM.UPGRADE_FROM, COMPONENTS.LVL, IIF(COMPONENTS_UPGRADE_FROM.AMOUNT > 1, ' x' & "
        "COMPONENTS_UPGRADE_FROM.AMOUNT,'') FROM COMPONENTS_UPGRADE_FROM, COMPONENTS WHERE "
        "COMPONENTS_UPGRADE_FROM.COMPONENT_NAME = '" +
            c +
            "' AND COMPONENTS.COMPONENT_NAME = "
            "COMPONENTS_UPGRADE_FROM.COMPONENT_NAME ORDER BY COMPONENTS_UPGRADE_FROM.UPGRADE_FROM",
        true);
    addLevelRows(parentKey, upgrades, marker::Comp, buildimg::Component, nodes, recurse, &BuildCompTree);

    const QList<Row> items = readRows(
        "SELECT COMPONENTS_ITEMS.ITEM_NAME, ITEMS.LVL, IIF(COMPONENTS_ITEMS.AMOUNT > 1, ' x' & COMPONENTS_ITEMS.AMOUNT) "
        "FROM COMPONENTS_ITEMS, ITEMS WHERE COMPONENTS_ITEMS.COMPONENT_NAME = '" +
            c +
            "' AND COMPONENTS_ITEMS.ITEM_NAME = "
            "ITEMS.ITEM_NAME ORDER BY COMPONENTS_ITEMS.ITEM_NAME",
        true);
    addLevelRows(parentKey, items, marker::Item, buildimg::Item, nodes, recurse);
}

namespace {
// Level and amount of one source row, fetched by a statement of its own for each source.
Row sourceRow(const QString& name, const QString& sql) {
    Recordset rs;
    rs.open(sql);
    Row r{name, QString(), QString()};
    if (!rs.eof()) {
        r.level = NzString(rs.value(0));
        r.amount = NzString(rs.value(1));
    }
    rs.close();
    return r;
}

void buildRawFrom(const QString& parentKey, const QString& name, const RawRecipe& recipe, TreeNodeSink& nodes,
                  bool& recurse) {
    DepthGuard guard;
    const QString r = FixQuotes(name);
    for (const QString& s : recipe.sources) {
        const QString sq = FixQuotes(s);
        const Row row = sourceRow(
            s, "SELECT (SELECT LVL FROM RAW_MATERIALS WHERE RAW_MATERIAL_NAME = '" + sq +
                   "') AS LVL, IIF(RAW_MATERIALS_REFINES_FROM.AMOUNT > 1, ' x' & "
                   "RAW_MATERIALS_REFINES_FROM.AMOUNT) AS AMOUNT FROM RAW_MATERIALS_REFINES_FROM WHERE "
                   "RAW_MATERIAL_NAME = '" +
                   r + "' AND REFINES_FROM = '" + sq + "'");
        addRawNode(parentKey, parentKey + marker::RawMat + s, levelText(row), s, nodes, recurse);
    }
    for (const QString& i : recipe.items) {
        const QString iq = FixQuotes(i);
        const Row row =
            sourceRow(i, "SELECT (SELECT LVL FROM ITEMS WHERE ITEM_NAME = '" + iq +
                             "' ) AS LVL, IIF(AMOUNT > 1, ' x' & AMOUNT) AS AMOUNT FROM RAW_MATERIALS_ITEMS "
                             "WHERE RAW_MATERIAL_NAME = '" +
                             r + "' AND ITEM_NAME = '" + iq + "'");
        nodes.addNode(parentKey, parentKey + marker::Item + i, levelText(row), buildimg::Item);
    }
}
} // namespace

void BuildRawMatTree(const QString& parentKey, const QString& name, TreeNodeSink& nodes, bool& recurse) {
    ReadTransaction reading;
    buildRawFrom(parentKey, name, readRawRecipe(FixQuotes(name)), nodes, recurse);
}

void TreeNodeList::addNode(const QString& parentKey, const QString& key, const QString& text, int image) {
    if (m_index.contains(key))
        throw VbError(35602, QStringLiteral("Key is not unique in collection"));
    m_index.insert(key, int(m_nodes.size()));
    m_nodes.append({parentKey, key, text, image, QString()});
}

void TreeNodeList::setNote(const QString& key, const QString& note) {
    const int i = indexOf(key);
    if (i >= 0)
        m_nodes[i].note = note;
}

QString TreeNodeList::fullPath(int i) const {
    QString path = m_nodes.at(i).text;
    int parent = indexOf(m_nodes.at(i).parentKey);
    for (int guard = 0; parent >= 0 && parent != i && guard < size(); ++guard) {
        path = m_nodes.at(parent).text + QLatin1Char('\\') + path;
        parent = m_nodes.at(parent).parentKey.isEmpty() ? -1 : indexOf(m_nodes.at(parent).parentKey);
    }
    return path;
}

void TreeNodeList::clear() {
    m_nodes.clear();
    m_index.clear();
}

QString TreeClipboardText(const QList<QPair<QString, QString>>& pathsAndTexts) {
    QString out;
    for (const auto& [path, text] : pathsAndTexts)
        out += QString(int(path.count(QLatin1Char('\\'))), QLatin1Char('\t')) + text + QLatin1String("\r\n");
    return out;
}

QString TreeClipboardText(const TreeNodeList& nodes) {
    QList<QPair<QString, QString>> lines;
    lines.reserve(nodes.size());
    for (int i = 0; i < nodes.size(); ++i)
        lines.append({nodes.fullPath(i), nodes.at(i).text});
    return TreeClipboardText(lines);
}
