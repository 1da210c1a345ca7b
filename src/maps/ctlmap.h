#pragma once
// The map control: one sector's navigation points at their positions, each with the picture of its
// type and its name beside it, over a labelled coordinate grid. The wheel zooms around the pointer,
// the buttons in the corner and the keys + - 0 zoom around the middle or fit the sector, dragging and
// the scroll bars pan, the arrow keys too. Resting the pointer on a point shows what is there.
#include "maps/locations.h"
#include "maps/mapview.h"

#include <QAbstractScrollArea>
#include <QHash>
#include <QStaticText>
#include <optional>

class QToolButton;

class ctlMap : public QAbstractScrollArea {
    Q_OBJECT
public:
    explicit ctlMap(QWidget* parent = nullptr);
    ~ctlMap() override;

    // Reads the sector's points ("SELECT * FROM NAV_POINTS WHERE SECTOR_NAME = '...") and shows the
    // whole sector, or keeps the view where it is (the same sector read again after a change).
    // Throws VbError, leaving the map as it was.
    void LoadSector(const QString& sector, bool keepView = false);
    // Shows these points as the sector's (what LoadSector does after reading).
    void setPoints(const QString& sector, const QList<NavPoint>& points, bool keepView = false);
    QString sector() const { return m_sector; }
    const QList<NavPoint>& points() const { return m_points; }
    int indexOf(const QString& name) const; // -1 when there is none

    const MapView& view() const { return m_view; }
    // The rectangle the map fits and scrolls over: the points' bounds, widened for a small sector.
    QRectF contentRect() const { return m_content; }
    void fitToSector();
    void zoomIn();
    void zoomOut();
    // Zooms by factor keeping the sector point under the screen point still.
    void zoomAt(const QPointF& screen, double factor);
    void panBy(const QPointF& screenDelta);
    // Centres the map on a point, zoomed in to at least twice the whole-sector scale, and selects it.
    bool centreOn(const QString& name);
    void centreOnWorld(const QPointF& world);
    // The scale against the scale that fits the whole sector, in percent.
    double zoomPercent() const;

    // The point under a screen position (within its marker, the nearest when several), or -1.
    int pointAt(const QPointF& screen) const;
    QString selected() const;
    void setSelected(const QString& name);
    int hovered() const { return m_hover; }

    // A location being placed: drawn faintly at its position until cleared.
    void setGhost(const QPointF& world, NavKind kind);
    void clearGhost();
    // While placing, a click anywhere reports its position (placeRequested) instead of selecting.
    void setPlacing(bool on);
    bool placing() const { return m_placing; }

    // The details text of a point (read once, kept until the sector is loaded again).
    QString detailsHtml(int index, bool links);
    // The marker size at the current scale, and where a point's name was placed (null when left out).
    int markerSize() const;
    QRectF labelBox(int index);

Q_SIGNALS:
    void selectionChanged(const QString& name);
    void pointActivated(const QString& name);  // double-click, or Enter on the selection
    void placeRequested(const QPointF& world); // a click while placing
    void pointerMoved(const QPointF& world, bool inside);
    void viewChanged();
    void contextMenuRequested(const QPointF& world, const QString& pointName, const QPoint& globalPos);
    void deleteRequested(const QString& name);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    void viewMoved();
    void updateScrollBars();
    void updateLimits();
    QMarginsF fitMargins() const;
    // Where the names go at a scale, in pixels from the sector's origin.
    QList<QRectF> placeNames(double scale, int marker) const;
    void applyPending();
    void layoutButtons();
    void setHover(int index);
    void ensureLabels();
    void paintLabels(class clsDC& dc, const QRectF& visible);

    QString m_sector;
    QList<NavPoint> m_points;
    QList<double> m_textWidths;
    QList<QStaticText> m_texts;
    QList<int> m_drawOrder; // the more important kinds last, so that they stay on top
    QHash<int, QString> m_details[2];
    QRectF m_content;
    MapView m_view;
    double m_fitScale = 1;
    QMarginsF m_fitMargins;
    int m_selected = -1;
    int m_hover = -1;
    std::optional<QPointF> m_ghost;
    NavKind m_ghostKind = NavKind::Unknown;
    bool m_placing = false;
    // Applied once the viewport has its final size (a map filled before it is shown).
    bool m_pendingFit = false;
    QString m_pendingCentre;
    bool m_settingBars = false;

    // Names placed at one scale, in pixels from the sector's origin; panning only moves them.
    QList<QRectF> m_labels;
    double m_labelScale = 0;
    int m_labelMarker = 0;

    bool m_dragging = false;
    bool m_pressed = false;
    QPointF m_pressPos;
    QPointF m_lastPos;
    QToolButton *m_zoomIn = nullptr, *m_zoomOut = nullptr, *m_fit = nullptr;
};
