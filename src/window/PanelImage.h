#pragma once

#include "document/NodeImage.h"
#include "surface/host/Picture.h"
#include "surface/text/FontObject.h"
#include "values/Colour.h"

#include <QString>

namespace zan::window {

class BenchWindow;

using values::Ref;

/// How a panel itself looks at one moment, its grid and what its document says of them. What the form of its properties
/// has changed is the difference of two images.
class PanelImage
{
public:
    PanelImage() = default;
    explicit PanelImage(BenchWindow& panel);

    bool operator==(const PanelImage& other) const;
    /// Whether both show the same window: an image says nothing of another one.
    bool isOfSameWindow(const PanelImage& other) const { return m_container == other.m_container; }
    /// Gives the panel back what differs from the image taken at the other end of the step; nothing when it shows
    /// another window by now. What fails stays as it is. The panel may be gone afterwards.
    void apply(BenchWindow& panel, const PanelImage& from) const;

private:
    bool hasSamePicture(const PanelImage& other) const;
    void applyPicture(BenchWindow& panel, const PanelImage& from) const;

    document::Node m_container;
    document::NodeImage m_settings;
    values::Colour m_backColor;
    values::Colour m_foreColor;
    Ref<surface::FontObject> m_font;       ///< the panel's, shared with its followers
    Ref<surface::FontObject> m_fontValues; ///< a copy, as the font itself may be changed
    bool m_stretch = false;
    bool m_snapToGrid = false;
    float m_gridSize = 0;
    QString m_pictureFile;
    Ref<surface::Picture> m_ownPicture; ///< of a panel whose picture came without a file of its own
};

} // namespace zan::window
