#pragma once
// Where a record is used: the recipes that call for it directly, and through them every record that
// needs it further up the chains, with how many of it one of each takes in all.
#include "views/billofmaterials.h"

namespace bom {

struct Use {
    Ref ref;
    bool found = false; // a row of its own table exists
    int level = 0;
    int steps = 0;           // the shortest chain from the record up to this one: 1 = used directly
    qint64 perUnit = 0;      // of the record, one of this takes, summed over every chain
    bool endProduct = false; // nothing uses it in turn
};

struct WhereUsedResult {
    QList<Use> uses;          // by steps, then by name
    QList<QList<Ref>> cycles; // chains that lead back to where they started: not followed
    bool overflow = false;
    int directCount() const;
};

// Reads upwards through every recipe table, a batch of names per statement. Throws VbError.
WhereUsedResult WhereUsed(const Ref& ref);

} // namespace bom
