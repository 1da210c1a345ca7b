#include "maps/maplabels.h"

#include <QHash>

#include <algorithm>
#include <cmath>
#include <numeric>

QList<QRectF> LabelCandidates(const LabelRequest& r, double gap) {
    const double x = r.anchor.x(), y = r.anchor.y();
    const double w = r.size.width(), h = r.size.height();
    const double off = r.radius + gap;
    // The corners sit a little in from the marker's box so that the name still reads as its own.
    const double diag = r.radius * 0.7 + gap;
    return {
        QRectF(x + off, y - h / 2, w, h),         // right
        QRectF(x - off - w, y - h / 2, w, h),     // left
        QRectF(x - w / 2, y - off - h, w, h),     // above
        QRectF(x - w / 2, y + off, w, h),         // below
        QRectF(x + diag, y - diag - h, w, h),     // above right
        QRectF(x + diag, y + diag, w, h),         // below right
        QRectF(x - diag - w, y - diag - h, w, h), // above left
        QRectF(x - diag - w, y + diag, w, h),     // below left
    };
}

namespace {

// Boxes bucketed by the cells of a square grid, so that a test looks only at its neighbours.
class BoxIndex {
public:
    explicit BoxIndex(double cell) : m_cell(cell) {}

    void add(const QRectF& box, int owner) {
        const int id = int(m_boxes.size());
        m_boxes.append({box, owner});
        forCells(box, [&](quint64 key) {
            m_cells[key].append(id);
            return true;
        });
    }

    // True when box overlaps a stored box of another owner.
    bool hits(const QRectF& box, int owner) const {
        bool hit = false;
        forCells(box, [&](quint64 key) {
            const auto it = m_cells.constFind(key);
            if (it == m_cells.cend())
                return true;
            for (int id : *it) {
                const Entry& e = m_boxes.at(id);
                if (e.owner != owner && e.box.intersects(box)) {
                    hit = true;
                    return false;
                }
            }
            return true;
        });
        return hit;
    }

private:
    struct Entry {
        QRectF box;
        int owner;
    };

    template <typename F> void forCells(const QRectF& box, F f) const {
        const qint64 x0 = qint64(std::floor(box.left() / m_cell)),
                     x1 = qint64(std::floor(box.right() / m_cell));
        const qint64 y0 = qint64(std::floor(box.top() / m_cell)),
                     y1 = qint64(std::floor(box.bottom() / m_cell));
        for (qint64 cx = x0; cx <= x1; ++cx)
            for (qint64 cy = y0; cy <= y1; ++cy)
                if (!f((quint64(quint32(qint32(cx))) << 32) | quint32(qint32(cy))))
                    return;
    }

    double m_cell;
    QList<Entry> m_boxes;
    QHash<quint64, QList<int>> m_cells;
};

} // namespace

QList<QRectF> PlaceLabels(const QList<LabelRequest>& requests, double gap, const QRectF& bounds) {
    const int n = int(requests.size());
    QList<QRectF> placed(n);
    if (n == 0)
        return placed;

    // Cells about the size of a typical name keep both the buckets and the lookups short.
    double cell = 0;
    for (const LabelRequest& r : requests)
        cell += r.size.height() * 3 + r.radius * 2;
    cell = std::max(8.0, cell / n);

    BoxIndex index(cell);
    for (int i = 0; i < n; ++i) {
        const LabelRequest& r = requests.at(i);
        const double d = r.radius;
        index.add(QRectF(r.anchor.x() - d, r.anchor.y() - d, 2 * d, 2 * d), i);
    }

    QList<int> order(n);
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&](int a, int b) { return requests.at(a).priority > requests.at(b).priority; });

    // Names are placed inside the bounds first; those that found no room there try again anywhere,
    // since a name cut by the edge of the view still says more than none.
    const bool bounded = bounds.isValid();
    for (int pass = bounded ? 0 : 1; pass < 2; ++pass) {
        for (int i : order) {
            const LabelRequest& r = requests.at(i);
            if (!placed.at(i).isNull() || r.size.isEmpty())
                continue;
            for (const QRectF& box : LabelCandidates(r, gap)) {
                if (pass == 0 && !bounds.contains(box))
                    continue;
                if (index.hits(box, i))
                    continue;
                placed[i] = box;
                index.add(box, i);
                break;
            }
        }
    }
    return placed;
}
