#pragma once

#include "wrappers/BenchControls.h"

#include <QPointer>

#include <cstdint>

namespace zan::surface {
class Surface;
}

namespace zan::window {

class BenchWindow;

using values::Ref;

/// Lays out a window of an older text terminal on a panel, as that terminal showed it.
///
/// Logger, scheme and whoever is told of a property may come back to the panel in the middle, or end it: what they have
/// loaded stands then, and the import ends quietly.
class KeelImport
{
public:
    /// The key that the imported window has in its scheme.
    static const QString WindowKey;

    KeelImport(BenchWindow& panel, surface::Surface& surface);
    /// Raises what BenchWindow::ImportKeel raises.
    void run(const QString& file);

private:
    /// Twips that a character of the terminal takes.
    struct Grid
    {
        float charWidth = 0;
        float lineHeight = 0;
    };

    bool goesOn() const;
    bool dress();
    bool takeWindow(const QString& file);
    void addConnectButton();
    void addRows();
    void addRow(site::Channel& channel, bool isLast);
    void showValue(wrappers::iBenchControl& label, site::Channel& channel, float left, float top);
    void showText(wrappers::iBenchControl& label, const QString& text, float left, float top);
    float widthOf(const QString& text) const;
    Ref<wrappers::iBenchControl> add(const QString& type, bool refreshes);

    BenchWindow& m_panel;
    surface::Surface& m_surface;
    QPointer<BenchWindow> m_alive;
    std::uint32_t m_load = 0; ///< the panel's, since its window is this one's
    Grid m_grid;
};

} // namespace zan::window
