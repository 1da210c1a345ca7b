#pragma once
// Ranks: the place of each of a set of values in their sorted order, equal values sharing one place.
// The list keeps a column's ranks once it has sorted it (keptranks.h), so that sorting it again in
// either direction is a radix sort of small integers; this file makes them.
//
// Texts are ranked without case by their case-folded code points, the byte order of their folded
// UTF-8 (foldedtexts.h). They are sorted eight bytes at a time, level by level: a radix sort on the
// first eight bytes, then on the next eight only inside runs that are still equal.
#include "lists/foldedtexts.h"

#include <cstddef>
#include <cstdint>

namespace ranks {

// Ranks the texts: out[i] is the place of text i among the distinct texts, in byte order. Returns the
// number of distinct texts.
uint32_t RankTexts(const FoldedTexts& texts, uint32_t* out);

// The same for numeric keys (compared as unsigned numbers).
uint32_t RankKeys(const uint64_t* keys, size_t n, uint32_t* out);

} // namespace ranks
