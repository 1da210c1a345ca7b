#include "lists/textranks.h"
#include "lists/radixsort.h"

#include <algorithm>
#include <bit>
#include <stdexcept>
#include <vector>

namespace ranks {

namespace {
using radix::KeyRow;

// Sorts the texts eight bytes at a time, level by level: at each level the runs of texts still equal
// so far are sorted by their next eight bytes. The keys of a level are read in one sweep through the
// texts in the order they were added, rather than text by text in sorted order, which would jump
// through memory; only a few texts left at a deep level are read one by one. An item's row is the
// text's number (its top bit set while the text goes on past the bytes keyed), its aux the text's
// position.
class TextRanker {
public:
    TextRanker(const FoldedTexts& texts, uint32_t* out) : m_texts(texts), m_out(out) {}

    uint32_t run() {
        const size_t n = m_texts.size();
        if (n > Row)
            throw std::length_error("too many texts to rank");
        if (n == 0)
            return 0;
        auto items = std::make_unique_for_overwrite<KeyRow[]>(n);
        KeyRow* v = items.get();
        m_first.assign(n / 64 + 1, 0);
        m_more.assign(n / 64 + 1, 0);
        std::vector<Run> runs, next;
        size_t depth = 8;
        if (!firstLevelByCounting(v, runs)) {
            // The first eight bytes of every text, and the next eight while the text is at hand.
            m_level = std::make_unique_for_overwrite<uint64_t[]>(n);
            m_levelDepth = 8;
            m_texts.forEach([&](size_t i, uint32_t pos) {
                const size_t len = m_texts.lengthAt(pos);
                v[i] = {m_texts.chunkAt(pos, 0), uint32_t(i) | (len > 8 ? GoesOn : 0), pos};
                m_level[i] = m_texts.chunkAt(pos, 8);
                if (len > 16)
                    m_more[i / 64] |= uint64_t(1) << (i % 64);
            });
            runs = {{0, n}};
            depth = 0;
        }
        for (; !runs.empty(); depth += 8) {
            next.clear();
            for (const Run& r : runs)
                split(v + r.start, r.size, r.start, next);
            if (!next.empty())
                keys(v, next, depth + 8);
            std::swap(runs, next);
        }
        // The ranks: each first of a group starts the next one.
        uint32_t rank = 0;
        for (size_t p = 0; p < n; ++p) {
            rank += (m_first[p / 64] >> (p % 64)) & 1;
            m_out[v[p].row & Row] = rank - 1;
        }
        return rank;
    }

private:
    static constexpr uint32_t GoesOn = 0x80000000u, Row = GoesOn - 1;
    static constexpr size_t SmallRun = 32;
    struct Run {
        size_t start, size;
    };

    void markFirst(size_t p) { m_first[p / 64] |= uint64_t(1) << (p % 64); }

    // Counting few values: a small open-addressing table of the values met so far, room for `most`
    // of them (returned; 0 when n is too small to be worth it).
    size_t startCounting(size_t n) {
        const size_t most = std::min<size_t>(2048, n / 8);
        if (most < 4)
            return 0;
        m_bits = std::bit_width(2 * most - 1);
        m_mask = (size_t(1) << m_bits) - 1;
        m_slots.assign(m_mask + 1, 0);
        m_values.clear();
        return most;
    }
    // The slot holding the value, or the free slot where it goes.
    size_t slotOf(uint64_t k) const {
        size_t s = size_t((k * 0x9E3779B97F4A7C15ull) >> (64 - m_bits));
        while (m_slots[s] != 0 && m_values[m_slots[s] - 1] != k)
            s = (s + 1) & m_mask;
        return s;
    }
    // The values met, in order: m_byValue[place] is the value's number.
    void sortValues() {
        m_byValue.resize(m_values.size());
        for (size_t i = 0; i < m_values.size(); ++i)
            m_byValue[i] = uint32_t(i);
        std::sort(m_byValue.begin(), m_byValue.end(),
                  [&](uint32_t a, uint32_t b) { return m_values[a] < m_values[b]; });
    }

    // The first level when the texts' first eight bytes take few values (names that begin with a few
    // words): those values are counted in one walk through the texts, and a second walk puts each
    // text's item straight in its place. False, having read only the first texts, when the values
    // are many. Otherwise the runs of texts that go on are in runs.
    bool firstLevelByCounting(KeyRow* v, std::vector<Run>& runs) {
        const size_t n = m_texts.size();
        const size_t most = startCounting(n);
        if (most == 0)
            return false;
        std::vector<uint8_t> longer; // per value: a text of it goes on past eight bytes
        auto ids = std::make_unique_for_overwrite<uint16_t[]>(n);
        bool few = true;
        m_texts.forEach([&](size_t i, uint32_t pos) {
            const uint64_t k = m_texts.chunkAt(pos, 0);
            const size_t s = slotOf(k);
            if (m_slots[s] == 0) {
                if (m_values.size() == most)
                    return few = false;
                m_values.push_back(k);
                longer.push_back(0);
                m_slots[s] = uint16_t(m_values.size());
            }
            const uint16_t id = uint16_t(m_slots[s] - 1);
            ids[i] = id;
            longer[id] |= m_texts.lengthAt(pos) > 8;
            return true;
        });
        if (!few)
            return false;
        const size_t values = m_values.size();
        sortValues();
        // Each value's first place in the sorted order.
        m_head.assign(values, 0);
        for (size_t i = 0; i < n; ++i)
            ++m_head[ids[i]];
        size_t at = 0;
        for (const uint32_t id : m_byValue) {
            const size_t count = m_head[id];
            m_head[id] = at;
            markFirst(at);
            if (count > 1 && longer[id])
                runs.push_back({at, count});
            else if (count > 1 && m_texts.hasNul())
                m_lengthRuns.push_back({at, count});
            at += count;
        }
        // The items in their places, keyed by their next eight bytes.
        m_texts.forEach([&](size_t i, uint32_t pos) {
            const size_t len = m_texts.lengthAt(pos);
            v[m_head[ids[i]]++] = {m_texts.chunkAt(pos, 8), uint32_t(i) | (len > 16 ? GoesOn : 0), pos};
        });
        for (const Run& r : m_lengthRuns)
            byLength(v + r.start, r.size, r.start);
        return true;
    }

    // Sorts a run by its keys and marks where each value starts; runs still equal whose texts go on
    // are left for the next level.
    void split(KeyRow* v, size_t n, size_t at, std::vector<Run>& next) {
        // A run whose texts share these bytes too (a long common prefix) goes on as it is.
        size_t same = 1;
        while (same < n && v[same].key == v[0].key)
            ++same;
        if (same == n && n > 1) {
            const bool goesOn = std::any_of(v, v + n, [](const KeyRow& r) { return (r.row & GoesOn) != 0; });
            markFirst(at);
            if (goesOn)
                next.push_back({at, n});
            else if (m_texts.hasNul())
                byLength(v, n, at);
            return;
        }
        if (n <= SmallRun)
            insertionSort(v, n);
        else if (!fewKeys(v, n))
            radix::sortKeyRows(v, n, m_tmp);
        for (size_t i = 0; i < n;) {
            size_t j = i + 1;
            bool goesOn = v[i].row & GoesOn;
            for (; j < n && v[j].key == v[i].key; ++j)
                goesOn = goesOn || (v[j].row & GoesOn);
            markFirst(at + i);
            if (j - i > 1) {
                if (goesOn)
                    next.push_back({at + i, j - i});
                else if (m_texts.hasNul())
                    byLength(v + i, j - i, at + i);
                // otherwise the same text
            }
            i = j;
        }
    }

    // The keys at depth for the items of the runs.
    void keys(KeyRow* v, const std::vector<Run>& runs, size_t depth) {
        if (m_levelDepth != depth) {
            size_t pending = 0;
            for (const Run& r : runs)
                pending += r.size;
            const size_t n = m_texts.size();
            if (pending < n / 16) {
                // Few: read each where it lies, asking for it a little ahead.
                constexpr size_t Ahead = 16;
                for (const Run& r : runs) {
                    KeyRow* w = v + r.start;
                    for (size_t i = 0; i < r.size; ++i) {
                        if (i + Ahead < r.size)
                            m_texts.prefetch(w[i + Ahead].aux, depth);
                        setKey(w[i], m_texts.chunkAt(w[i].aux, depth),
                               m_texts.lengthAt(w[i].aux) > depth + 8);
                    }
                }
                return;
            }
            // Many: one sweep through the texts, then each item picks up its text's key.
            if (!m_level)
                m_level = std::make_unique_for_overwrite<uint64_t[]>(n);
            std::fill(m_more.begin(), m_more.end(), 0);
            m_texts.forEach([&](size_t i, uint32_t pos) {
                m_level[i] = m_texts.chunkAt(pos, depth);
                if (m_texts.lengthAt(pos) > depth + 8)
                    m_more[i / 64] |= uint64_t(1) << (i % 64);
            });
            m_levelDepth = depth;
        }
        for (const Run& r : runs) {
            KeyRow* w = v + r.start;
            for (size_t i = 0; i < r.size; ++i) {
                const size_t t = w[i].row & Row;
                const bool more = (m_more[t / 64] >> (t % 64)) & 1;
                setKey(w[i], m_level[t], more);
            }
        }
    }

    static void setKey(KeyRow& item, uint64_t key, bool goesOn) {
        item.key = key;
        item.row = (item.row & Row) | (goesOn ? GoesOn : 0);
    }

    static void insertionSort(KeyRow* v, size_t n) {
        for (size_t i = 1; i < n; ++i) {
            const KeyRow x = v[i];
            size_t j = i;
            for (; j > 0 && v[j - 1].key > x.key; --j)
                v[j] = v[j - 1];
            v[j] = x;
        }
    }

    // Texts equal in every byte they have, where a text may hold NUL bytes: the shorter comes first
    // (the padding is zero, the lowest byte), and texts of one length are the same text.
    void byLength(KeyRow* v, size_t n, size_t at) {
        for (size_t i = 0; i < n; ++i)
            v[i].key = m_texts.lengthAt(v[i].aux);
        std::sort(v, v + n, [](const KeyRow& a, const KeyRow& b) { return a.key < b.key; });
        for (size_t i = 1; i < n; ++i)
            if (v[i].key != v[i - 1].key)
                markFirst(at + i);
    }

    // Keys that take only a few values (shared words, repeated texts) are counted rather than radix
    // sorted: one pass through a small hash table, then the items moved to their places where they
    // lie. False when there are too many values for that.
    bool fewKeys(KeyRow* v, size_t n) {
        const size_t most = startCounting(n);
        if (most == 0)
            return false;
        // Each item's key becomes the number of its value for now.
        for (size_t i = 0; i < n; ++i) {
            const uint64_t k = v[i].key;
            const size_t s = slotOf(k);
            if (m_slots[s] == 0) {
                if (m_values.size() == most) {
                    for (size_t j = 0; j < i; ++j)
                        v[j].key = m_values[v[j].key];
                    return false;
                }
                m_values.push_back(k);
                m_slots[s] = uint16_t(m_values.size());
            }
            v[i].key = m_slots[s] - 1u;
        }
        const size_t values = m_values.size();
        // The values in order; each item's key becomes its value's place in that order.
        sortValues();
        m_placeOf.resize(values);
        for (size_t p = 0; p < values; ++p)
            m_placeOf[m_byValue[p]] = uint32_t(p);
        m_head.assign(values + 1, 0);
        for (size_t i = 0; i < n; ++i) {
            v[i].key = m_placeOf[v[i].key];
            ++m_head[v[i].key + 1];
        }
        for (size_t p = 1; p <= values; ++p)
            m_head[p] += m_head[p - 1];
        m_end.assign(m_head.begin() + 1, m_head.end());
        // Each place's items, moved in cycles: every move puts one item where it belongs.
        for (size_t p = 0; p < values; ++p) {
            while (m_head[p] < m_end[p]) {
                KeyRow item = v[m_head[p]];
                while (item.key != p)
                    std::swap(item, v[m_head[item.key]++]);
                v[m_head[p]++] = item;
            }
        }
        for (size_t i = 0; i < n; ++i)
            v[i].key = m_values[m_byValue[v[i].key]];
        return true;
    }

    const FoldedTexts& m_texts;
    uint32_t* m_out;
    std::vector<uint64_t> m_first;       // by place in the sorted order: a new value starts here
    std::vector<Run> m_lengthRuns;       // texts alike in the bytes they have, told apart by length
    std::unique_ptr<uint64_t[]> m_level; // by text: its key at the depth m_levelDepth (0: none yet)
    size_t m_levelDepth = 0;
    std::vector<uint64_t> m_more; // by text: whether it goes on past that depth
    radix::Scratch<KeyRow> m_tmp;
    // fewKeys: the hash table (value number + 1, 0 free), the values, the values in order and each
    // value's place in it, and each place's next free slot and end.
    std::vector<uint16_t> m_slots;
    int m_bits = 0;
    size_t m_mask = 0;
    std::vector<uint64_t> m_values;
    std::vector<uint32_t> m_byValue, m_placeOf;
    std::vector<size_t> m_head, m_end;
};
} // namespace

uint32_t RankTexts(const FoldedTexts& texts, uint32_t* out) {
    return TextRanker(texts, out).run();
}

uint32_t RankKeys(const uint64_t* keys, size_t n, uint32_t* out) {
    auto items = std::make_unique_for_overwrite<KeyRow[]>(n);
    for (size_t i = 0; i < n; ++i)
        items[i] = {keys[i], uint32_t(i), 0};
    radix::Scratch<KeyRow> tmp;
    radix::sortKeyRows(items.get(), n, tmp);
    uint32_t next = 0;
    for (size_t i = 0; i < n; ++i) {
        if (i > 0 && items[i].key != items[i - 1].key)
            ++next;
        out[items[i].row] = next;
    }
    return n == 0 ? 0 : next + 1;
}

} // namespace ranks
