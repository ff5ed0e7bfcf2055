#pragma once

#include <QGraphicsProxyWidget>
#include <QGraphicsView>
#include <QPointer>
#include <QScrollArea>
#include <QWidget>

namespace zan::window {
class BenchWindow;
}

namespace zan::host {

/// A panel on a page of the host, at a zoom. At 100 % it stands in a scroll area and fills it; at any other zoom it has
/// the size of its contents and is drawn larger or smaller in the middle of the page. The panel itself knows nothing
/// of it: its twips stay what they are.
class PanelView : public QWidget
{
    Q_OBJECT
public:
    static constexpr int Fit = 0; ///< as large as the page allows
    static constexpr int Smallest = 50;
    static constexpr int Largest = 400;

    /// Takes the panel over.
    explicit PanelView(window::BenchWindow* panel, QWidget* parent = nullptr);
    ~PanelView() override;

    /// Percent, Smallest to Largest (what lies outside is drawn as the nearest), or Fit.
    void setZoom(int percent);
    /// The percentage that the panel is drawn at.
    double shownZoom() const;
    /// The panel shows something else now: its size follows.
    void followPanel();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void showPlain();
    void showScaled();
    void scale();

    QPointer<window::BenchWindow> m_panel;
    QScrollArea* m_plain;
    QGraphicsView* m_scaled;
    QPointer<QGraphicsProxyWidget> m_proxy; // of the panel in the scene
    bool m_isScaled = false;
    int m_zoom = 100;
};

} // namespace zan::host
