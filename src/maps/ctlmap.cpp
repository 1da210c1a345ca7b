#include "maps/ctlmap.h"

#include "core/tooltip.h"
#include "data/errorreport.h"
#include "maps/clsdc.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolButton>
#include <QToolTip>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {
constexpr double kEmptyExtent = 10000; // what an empty sector shows, in sector units
constexpr double kMinExtent = 1000;    // a sector smaller than this is shown as this wide
constexpr double kWheelStep = 1.2;     // one notch of the wheel
constexpr double kButtonStep = 1.5;

// The pictures of the zoom buttons.
QIcon buttonIcon(int which) {
    QIcon icon;
    for (int size : {16, 24, 32, 48}) {
        QPixmap pm(size, size);
        pm.fill(Qt::transparent);
        QPainter p(&pm);
        p.setRenderHint(QPainter::Antialiasing);
        p.scale(size / 16.0, size / 16.0);
        p.setPen(QPen(QColor(0xdc, 0xe6, 0xf5), 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        if (which != 2) {
            p.drawLine(QPointF(3.5, 8), QPointF(12.5, 8));
            if (which == 0)
                p.drawLine(QPointF(8, 3.5), QPointF(8, 12.5));
        } else {
            for (const QPointF& c : {QPointF(3, 3), QPointF(13, 3), QPointF(13, 13), QPointF(3, 13)}) {
                const double dx = c.x() < 8 ? 4 : -4, dy = c.y() < 8 ? 4 : -4;
                p.drawPolyline(QList<QPointF>{QPointF(c.x(), c.y() + dy), c, QPointF(c.x() + dx, c.y())});
            }
            p.drawRect(QRectF(6.5, 6.5, 3, 3));
        }
        p.end();
        icon.addPixmap(pm);
    }
    return icon;
}
} // namespace

ctlMap::ctlMap(QWidget* parent) : QAbstractScrollArea(parent) {
    setObjectName(QStringLiteral("ctlMap"));
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    viewport()->setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    viewport()->setCursor(Qt::OpenHandCursor);
    setMinimumSize(240, 200);

    const char* names[] = {"cmdZoomIn", "cmdZoomOut", "cmdFit"};
    const char* tips[] = {"Zoom in (+)", "Zoom out (-)", "Show the whole sector (0)"};
    QToolButton** buttons[] = {&m_zoomIn, &m_zoomOut, &m_fit};
    for (int i = 0; i < 3; ++i) {
        auto* b = new QToolButton(viewport());
        b->setObjectName(QLatin1String(names[i]));
        SetTip(b, QLatin1String(tips[i]));
        b->setIcon(buttonIcon(i));
        b->setIconSize(QSize(16, 16));
        b->setFixedSize(30, 30);
        b->setFocusPolicy(Qt::NoFocus);
        b->setCursor(Qt::ArrowCursor);
        b->setAutoRaise(false);
        b->setStyleSheet(QStringLiteral(
            "QToolButton { background: rgba(10,18,34,215); border: 1px solid rgba(110,160,220,130); "
            "border-radius: 4px; } QToolButton:hover { background: rgba(34,58,100,235); } "
            "QToolButton:pressed { background: rgba(60,90,140,240); }"));
        *buttons[i] = b;
    }
    connect(m_zoomIn, &QToolButton::clicked, this, &ctlMap::zoomIn);
    connect(m_zoomOut, &QToolButton::clicked, this, &ctlMap::zoomOut);
    connect(m_fit, &QToolButton::clicked, this, &ctlMap::fitToSector);
    connect(horizontalScrollBar(), &QScrollBar::valueChanged, this, [this](int v) {
        if (m_settingBars)
            return;
        m_view.setCentre(centreForHorizontal(m_view, v));
        viewMoved();
    });
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this](int v) {
        if (m_settingBars)
            return;
        m_view.setCentre(centreForVertical(m_view, v));
        viewMoved();
    });
    m_view.setViewport(viewport()->size());
    setPoints(QString(), {});
}

ctlMap::~ctlMap() = default;

void ctlMap::LoadSector(const QString& sector, bool keepView) {
    setPoints(sector, ::LoadSector(sector), keepView);
}

void ctlMap::setPoints(const QString& sector, const QList<NavPoint>& points, bool keepView) {
    m_sector = sector;
    m_points = points;
    const QFontMetricsF fm(font());
    m_textWidths.clear();
    m_textWidths.reserve(points.size());
    for (const NavPoint& p : points)
        m_textWidths.append(fm.horizontalAdvance(p.name));
    m_texts = QList<QStaticText>(points.size());
    m_drawOrder.resize(points.size());
    std::iota(m_drawOrder.begin(), m_drawOrder.end(), 0);
    std::stable_sort(m_drawOrder.begin(), m_drawOrder.end(), [&points](int a, int b) {
        return LabelPriority(points.at(a).kind) < LabelPriority(points.at(b).kind);
    });
    m_details[0].clear();
    m_details[1].clear();
    m_labels.clear();
    m_labelScale = 0;
    m_selected = -1;
    m_hover = -1;
    if (points.isEmpty()) {
        m_content = QRectF(-kEmptyExtent / 2, -kEmptyExtent / 2, kEmptyExtent, kEmptyExtent);
    } else {
        QRectF r = PointBounds(points);
        const QPointF c = r.center();
        const double w = std::max(r.width(), kMinExtent), h = std::max(r.height(), kMinExtent);
        m_content = QRectF(c.x() - w / 2, c.y() - h / 2, w, h);
    }
    m_pendingCentre.clear();
    m_pendingFit = !keepView;
    updateLimits();
    applyPending();
    Q_EMIT selectionChanged(QString());
}

int ctlMap::indexOf(const QString& name) const {
    for (int i = 0; i < m_points.size(); ++i)
        if (m_points.at(i).name.compare(name, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

void ctlMap::updateLimits() {
    m_fitMargins = fitMargins();
    m_fitScale = MapView::fitScale(m_view.viewport(), m_content, m_fitMargins, kMinExtent);
    m_view.setScaleLimits(m_fitScale / 4, m_fitScale * 400);
}

QMarginsF ctlMap::fitMargins() const {
    // Room for the grid's labels along the top and the left and for the scale bar at the foot, and
    // then for the names that stand out beyond the points furthest out, as they are placed at the
    // fitted scale; so the whole-sector view shows every name it has room for uncut.
    const QFontMetricsF fm(font());
    const double band = clsDC::bandHeight(font());
    const QMarginsF base(fm.horizontalAdvance(QStringLiteral("-00000")) + 18, band + 8, 12, band + 16);
    if (m_points.isEmpty())
        return base;
    const double s = MapView::fitScale(m_view.viewport(), m_content, base, kMinExtent);
    const int marker = int(std::lround(MarkerSize(int(m_points.size()), m_content, s)));
    const QRectF c(m_content.left() * s, -m_content.bottom() * s, m_content.width() * s,
                   m_content.height() * s);
    QRectF used = c.adjusted(-marker / 2.0, -marker / 2.0, marker / 2.0, marker / 2.0);
    for (const QRectF& box : placeNames(s, marker))
        if (!box.isNull())
            used |= box;
    const QSizeF vp = m_view.viewport();
    auto room = [](double v, double limit) { return std::clamp(v, 0.0, limit); };
    return base + QMarginsF(room(c.left() - used.left(), vp.width() * 0.3),
                            room(c.top() - used.top(), vp.height() * 0.3),
                            room(used.right() - c.right(), vp.width() * 0.3),
                            room(used.bottom() - c.bottom(), vp.height() * 0.3));
}

void ctlMap::applyPending() {
    if (m_pendingFit) {
        m_view.fit(m_content, m_fitMargins, kMinExtent);
    } else if (!m_pendingCentre.isEmpty()) {
        const int i = indexOf(m_pendingCentre);
        if (i >= 0) {
            m_view.setScale(std::max(m_view.scale(), m_fitScale * 2));
            m_view.setCentre(QPointF(m_points.at(i).x, m_points.at(i).y));
        }
    }
    viewMoved();
}

void ctlMap::viewMoved() {
    updateScrollBars();
    viewport()->update();
    Q_EMIT viewChanged();
}

void ctlMap::updateScrollBars() {
    m_settingBars = true;
    const ScrollAxis h = horizontalScroll(m_view, m_content), v = verticalScroll(m_view, m_content);
    horizontalScrollBar()->setRange(h.minimum, h.maximum);
    horizontalScrollBar()->setPageStep(h.page);
    horizontalScrollBar()->setSingleStep(std::max(1, h.page / 12));
    horizontalScrollBar()->setValue(h.value);
    verticalScrollBar()->setRange(v.minimum, v.maximum);
    verticalScrollBar()->setPageStep(v.page);
    verticalScrollBar()->setSingleStep(std::max(1, v.page / 12));
    verticalScrollBar()->setValue(v.value);
    m_settingBars = false;
}

void ctlMap::scrollContentsBy(int, int) {
    // The bars move the view through their valueChanged signals; nothing is scrolled as pixels.
}

void ctlMap::fitToSector() {
    m_pendingCentre.clear();
    m_view.fit(m_content, m_fitMargins, kMinExtent);
    viewMoved();
}

void ctlMap::zoomIn() {
    zoomAt(QPointF(m_view.viewport().width() / 2, m_view.viewport().height() / 2), kButtonStep);
}

void ctlMap::zoomOut() {
    zoomAt(QPointF(m_view.viewport().width() / 2, m_view.viewport().height() / 2), 1 / kButtonStep);
}

void ctlMap::zoomAt(const QPointF& screen, double factor) {
    m_pendingFit = false;
    m_pendingCentre.clear();
    if (m_view.zoomAt(screen, factor))
        viewMoved();
}

void ctlMap::panBy(const QPointF& screenDelta) {
    m_pendingFit = false;
    m_pendingCentre.clear();
    m_view.panBy(screenDelta);
    viewMoved();
}

bool ctlMap::centreOn(const QString& name) {
    const int i = indexOf(name);
    if (i < 0)
        return false;
    setSelected(m_points.at(i).name);
    m_pendingFit = false;
    m_pendingCentre = m_points.at(i).name;
    applyPending();
    return true;
}

void ctlMap::centreOnWorld(const QPointF& world) {
    m_pendingFit = false;
    m_pendingCentre.clear();
    m_view.setCentre(world);
    viewMoved();
}

double ctlMap::zoomPercent() const {
    return m_view.scale() / m_fitScale * 100;
}

int ctlMap::markerSize() const {
    return int(std::lround(MarkerSize(int(m_points.size()), m_content, m_view.scale())));
}

int ctlMap::pointAt(const QPointF& screen) const {
    const double reach = markerSize() / 2.0 + 3;
    int best = -1;
    double bestDistance = reach * reach;
    for (int i = 0; i < m_points.size(); ++i) {
        const QPointF s = m_view.toScreen(QPointF(m_points.at(i).x, m_points.at(i).y));
        const double dx = s.x() - screen.x(), dy = s.y() - screen.y();
        const double d = dx * dx + dy * dy;
        if (d <= bestDistance) {
            bestDistance = d;
            best = i;
        }
    }
    return best;
}

QString ctlMap::selected() const {
    return m_selected >= 0 ? m_points.at(m_selected).name : QString();
}

void ctlMap::setSelected(const QString& name) {
    const int i = name.isEmpty() ? -1 : indexOf(name);
    if (i == m_selected)
        return;
    m_selected = i;
    viewport()->update();
    Q_EMIT selectionChanged(selected());
}

void ctlMap::setHover(int index) {
    if (index == m_hover)
        return;
    m_hover = index;
    viewport()->update();
}

void ctlMap::setGhost(const QPointF& world, NavKind kind) {
    m_ghost = world;
    m_ghostKind = kind;
    viewport()->update();
}

void ctlMap::clearGhost() {
    m_ghost.reset();
    viewport()->update();
}

void ctlMap::setPlacing(bool on) {
    m_placing = on;
    viewport()->setCursor(on ? Qt::CrossCursor : Qt::OpenHandCursor);
}

QString ctlMap::detailsHtml(int index, bool links) {
    if (index < 0 || index >= m_points.size())
        return QString();
    QHash<int, QString>& cache = m_details[links ? 1 : 0];
    const auto it = cache.constFind(index);
    if (it != cache.cend())
        return *it;
    const NavPoint& p = m_points.at(index);
    QString html;
    try {
        html = PointDetailsHtml(p, ReadPointDetails(m_sector, p.name), links);
    } catch (const VbError& e) {
        // Said once; the point keeps what the map itself knows.
        ReportDBError(e, QStringLiteral("ReadPointDetails"), QStringLiteral("UserControl ctlMap"));
        html = PointDetailsHtml(p, PointDetails(), false);
    }
    cache.insert(index, html);
    return html;
}

void ctlMap::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    m_view.setViewport(viewport()->size());
    updateLimits();
    layoutButtons();
    applyPending();
}

void ctlMap::showEvent(QShowEvent* event) {
    QAbstractScrollArea::showEvent(event);
    m_view.setViewport(viewport()->size());
    updateLimits();
    layoutButtons();
    applyPending();
}

void ctlMap::layoutButtons() {
    const int x = viewport()->width() - m_zoomIn->width() - 10;
    int y = clsDC::bandHeight(font()) + 10;
    for (QToolButton* b : {m_zoomIn, m_zoomOut, m_fit}) {
        b->move(x, y);
        y += b->height() + 4;
    }
}

void ctlMap::wheelEvent(QWheelEvent* event) {
    const int delta = event->angleDelta().y() ? event->angleDelta().y() : event->angleDelta().x();
    if (delta == 0) {
        event->ignore();
        return;
    }
    zoomAt(event->position(), std::pow(kWheelStep, delta / 120.0));
    event->accept();
}

void ctlMap::mousePressEvent(QMouseEvent* event) {
    setFocus(Qt::MouseFocusReason);
    if (event->button() != Qt::LeftButton) {
        QAbstractScrollArea::mousePressEvent(event);
        return;
    }
    m_pressed = true;
    m_dragging = false;
    m_pressPos = m_lastPos = event->position();
    event->accept();
}

void ctlMap::mouseMoveEvent(QMouseEvent* event) {
    const QPointF pos = event->position();
    if (m_pressed && (event->buttons() & Qt::LeftButton)) {
        if (!m_dragging && (pos - m_pressPos).manhattanLength() >= QApplication::startDragDistance()) {
            m_dragging = true;
            viewport()->setCursor(Qt::ClosedHandCursor);
        }
        if (m_dragging) {
            panBy(pos - m_lastPos);
            m_lastPos = pos;
        }
    } else {
        setHover(pointAt(pos));
    }
    Q_EMIT pointerMoved(m_view.toWorld(pos), true);
    event->accept();
}

void ctlMap::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !m_pressed) {
        QAbstractScrollArea::mouseReleaseEvent(event);
        return;
    }
    m_pressed = false;
    if (m_dragging) {
        m_dragging = false;
        viewport()->setCursor(m_placing ? Qt::CrossCursor : Qt::OpenHandCursor);
    } else if (m_placing) {
        Q_EMIT placeRequested(m_view.toWorld(event->position()));
    } else {
        const int i = pointAt(event->position());
        setSelected(i >= 0 ? m_points.at(i).name : QString());
    }
    event->accept();
}

void ctlMap::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || m_placing) {
        event->accept();
        return;
    }
    const int i = pointAt(event->position());
    if (i >= 0) {
        setSelected(m_points.at(i).name);
        Q_EMIT pointActivated(m_points.at(i).name);
    }
    event->accept();
}

void ctlMap::keyPressEvent(QKeyEvent* event) {
    const QSizeF vp = m_view.viewport();
    switch (event->key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        zoomIn();
        break;
    case Qt::Key_Minus:
        zoomOut();
        break;
    case Qt::Key_0:
    case Qt::Key_Home:
        fitToSector();
        break;
    case Qt::Key_Left:
        panBy(QPointF(vp.width() / 8, 0));
        break;
    case Qt::Key_Right:
        panBy(QPointF(-vp.width() / 8, 0));
        break;
    case Qt::Key_Up:
        panBy(QPointF(0, vp.height() / 8));
        break;
    case Qt::Key_Down:
        panBy(QPointF(0, -vp.height() / 8));
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (m_selected >= 0)
            Q_EMIT pointActivated(selected());
        break;
    case Qt::Key_Delete:
        if (m_selected >= 0)
            Q_EMIT deleteRequested(selected());
        break;
    case Qt::Key_Escape:
        if (m_selected < 0) {
            QAbstractScrollArea::keyPressEvent(event);
            return;
        }
        setSelected(QString());
        break;
    default:
        QAbstractScrollArea::keyPressEvent(event);
        return;
    }
    event->accept();
}

void ctlMap::contextMenuEvent(QContextMenuEvent* event) {
    const QPointF pos = viewport()->mapFrom(this, event->pos());
    const int i = pointAt(pos);
    if (i >= 0)
        setSelected(m_points.at(i).name);
    Q_EMIT contextMenuRequested(m_view.toWorld(pos), i >= 0 ? m_points.at(i).name : QString(),
                                event->globalPos());
    event->accept();
}

bool ctlMap::viewportEvent(QEvent* event) {
    switch (event->type()) {
    case QEvent::ToolTip: {
        auto* help = static_cast<QHelpEvent*>(event);
        const int i = pointAt(help->pos());
        if (i < 0) {
            QToolTip::hideText();
            event->ignore();
            return true;
        }
        const QPointF s = m_view.toScreen(QPointF(m_points.at(i).x, m_points.at(i).y));
        const int r = markerSize() / 2 + 3;
        QToolTip::showText(help->globalPos(), detailsHtml(i, false), viewport(),
                           QRect(int(s.x()) - r, int(s.y()) - r, 2 * r, 2 * r));
        return true;
    }
    case QEvent::Leave:
        setHover(-1);
        Q_EMIT pointerMoved(QPointF(), false);
        break;
    default:
        break;
    }
    return QAbstractScrollArea::viewportEvent(event);
}
