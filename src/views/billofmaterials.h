#pragma once
// The bill of materials: everything a set of targets (2 x an equipment, 10 x a component, ...) takes,
// expanded down the recipe tables with the amounts multiplied on the way and totalled by record.
//
// The recipes are read once for all records the targets can reach (RecipeBook, a batch of names per
// statement), then expanded in memory. What the player has is subtracted from a record's total before
// its own ingredients are expanded: the CHECK tick means "I have all of it", an owned quantity means
// "I have that many". Having a sub-assembly therefore removes its whole subtree, and having part of
// it removes that share. Targets themselves are built in the quantity asked for; what the player has
// of a target only counts where other targets need it as an ingredient.
//
// A recipe that contains itself, directly or through others, is reported as a cycle (the records
// that form it) and the step that closes it is not followed.
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <vector>

class Recordset;

namespace bom {

enum class Kind : quint8 { Equipment, Component, RawMaterial, Item };
inline constexpr int KindCount = 4;

// The main list's category word: "Equipment", "Components", "Raw Materials", "Items" (also the build
// view's kinds and the kinds of the owned-quantity table).
QString categoryOf(Kind kind);
// "Equipment", "Component", "Raw Material", "Item".
QString kindWord(Kind kind);
// A category or kind word to its kind; false for anything else (Stations, MOBs).
bool kindOfWord(const QString& word, Kind* kind);

struct Ref {
    Kind kind = Kind::Equipment;
    QString name;
    // Names compare as the database compares them, without regard to case (core/casefold.h).
    friend bool operator==(const Ref& a, const Ref& b);
};
size_t qHash(const Ref& ref, size_t seed = 0);

// The recipe table an ingredient comes from.
enum class Link : quint8 { UpgradeFrom, Component, Item, RawMaterial, Equipment, RefinedFrom };

// A recipe table: the records of one kind made from ingredients of one kind.
struct RecipeTable {
    Kind kind;  // of the record made
    Kind child; // of the ingredient
    Link link;
    const char* table;
    const char* madeColumn;
    const char* ingredientColumn; // the table's AMOUNT goes with it
};
// Every recipe table, in the build view's order for each kind made.
const QList<RecipeTable>& RecipeTables();

struct Ingredient {
    int record = -1;
    qint64 amount = 1; // per one of the record made; an amount missing or below 1 counts as 1
    Link link = Link::Component;
};

struct Record {
    Kind kind = Kind::Equipment;
    QString name;
    bool found = false; // a row of its own table exists (recipes may name records that do not)
    int level = 0;
    qint64 price = 0; // PRICE: -2 mission reward, -1 loot only, 0 unknown
    qint64 fee = 0;   // equipment: COST_TO_MANUFACTURE (negative: not manufacturable)
    bool checked = false;
    qint64 owned = 0;              // from the owned-quantity table; 0 when none is recorded
    QList<Ingredient> ingredients; // in the build view's order
    bool hasRecipe() const { return !ingredients.isEmpty(); }
    Ref ref() const { return {kind, name}; }
};

class RecipeBook {
public:
    // Reads the records the roots reach through every recipe table. Throws VbError; the records read
    // before the error stay. Loading again adds what is not yet known.
    void load(const QList<Ref>& roots);
    void clear();

    int indexOf(const Ref& ref) const; // -1 when it was not read
    int size() const { return int(m_records.size()); }
    const Record& at(int i) const { return m_records.at(size_t(i)); }
    // What the player has, changed by this program after reading: kept without reading again.
    void setChecked(int i, bool checked) { m_records.at(size_t(i)).checked = checked; }
    void setOwned(int i, qint64 owned) { m_records.at(size_t(i)).owned = owned; }

private:
    int add(Kind kind, const QString& name);
    void readRecords(Kind kind, const QStringList& names, bool owned);
    void readRecipes(Kind kind, const QStringList& names, bool owned);
    void setRecord(int i, const Recordset& rs, int firstColumn);
    std::vector<Record> m_records;
    QHash<Ref, int> m_index;
    QStringList m_pending[KindCount];
};

struct Target {
    Ref ref;
    qint64 quantity = 1;
};

struct Options {
    bool buildIntermediates = true; // false: ingredients that have a recipe are obtained as they are
    bool countHave = true;          // subtract what the player has
    QHash<Ref, bool> build;         // per record: true build it, false obtain it (over the rule above)
};

// Whether a record is made from its recipe in this plan (targets are, unless told otherwise).
bool Builds(const Record& record, bool isTarget, const Options& options);

// One record of the totals.
struct Line {
    int record = -1;
    qint64 ordered = 0; // asked for as a target
    qint64 needed = 0;  // called for by the recipes above it
    qint64 have = 0;    // of needed, covered by what the player has
    qint64 toGet() const { return ordered + needed - have; }
    bool built = false;        // made from its recipe: its ingredients are lines of their own
    QList<int> usedBy;         // records whose recipe calls for it in this plan
    std::vector<bool> targets; // by target index: the targets it is needed for
};

struct Cycle {
    QList<int> records; // each made from the next, the last from the first
};

struct Plan {
    QList<Line> lines; // every record ordered or needed, each after all records that call for it
    QList<Cycle> cycles;
    bool overflow = false; // a total grew beyond MaxQuantity and was held there
    int lineOf(int record) const { return lineIndex.value(record, -1); }
    QHash<int, int> lineIndex; // record -> line
};

inline constexpr qint64 MaxQuantity = 1'000'000'000'000'000;

Plan Expand(const RecipeBook& book, const QList<Target>& targets, const Options& options);

// "A -> B -> A" with each record's kind word: for the message that names a cycle.
QString CycleText(const RecipeBook& book, const Cycle& cycle);

// The same expansion as a tree, one node per use: why each line of the totals is there. What the
// player has is handed out to the uses in tree order (depth first, in recipe order), so the covered
// quantities of the nodes of one record add up to its line's have. Nodes are stored flat; the children
// of a node follow one another.
struct TreeNode {
    int record = -1;
    int parent = -1;
    int row = 0;         // among its parent's children
    qint64 quantity = 0; // this use calls for
    qint64 covered = 0;  // of quantity, covered by what the player has
    Link link = Link::Component;
    bool target = false;
    bool built = false;
    bool cycle = false; // the record is already above it: not followed
    int firstChild = -1;
    int childCount = 0;
};

struct ExpansionTree {
    std::vector<TreeNode> nodes; // the targets are the nodes without a parent, in target order
    QList<int> roots;
    bool truncated = false; // more nodes than allowed: the rest is not shown
};

ExpansionTree ExpandTree(const RecipeBook& book, const QList<Target>& targets, const Options& options,
                         int maxNodes = 1'000'000);

} // namespace bom
