#include "window/BenchWindowObject.h"

#include "display/SiteMapControl.h"
#include "window/PanelDesign.h"

namespace zan::window {

namespace {

/// A design value of the panel. PanelDesign reads and writes the bag, in orders of their own.
binding::Member kept(const binding::Member& member, const binding::Variant& byDefault)
{
    binding::Member row = member.stored();
    row.fallback = byDefault;
    return row;
}

constexpr bool Yes = true;
constexpr bool No = false;
constexpr std::int16_t NoStyle = 0;
constexpr std::int16_t Opaque = 1;

} // namespace

BenchWindow& BenchWindowObject::window() const
{
    if (!m_window)
        values::raise(values::ErrorNumber::ObjectNotSet);
    return *m_window;
}

const binding::MemberTable& BenchWindowObject::members() const
{
    using C = BenchWindow;
    using binding::method;
    using binding::property;
    using binding::readOnly;
    return binding::table([] {
        return binding::MemberTable(
            "BenchWindow", nullptr,
            {
                kept(property<&C::BackColor, &C::setBackColor>("BackColor"),
                     binding::Variant(values::ButtonFace.code)),
                kept(property<&C::ForeColor, &C::setForeColor>("ForeColor"),
                     binding::Variant(values::ButtonText.code)),
                kept(property<&C::Enabled, &C::setEnabled>("Enabled"), Yes),
                property<&C::Font, &C::setFont>("Font").stored(),
                kept(property<&C::BackStyle, &C::setBackStyle>("BackStyle"), Opaque),
                kept(property<&C::BorderStyle, &C::setBorderStyle>("BorderStyle"), NoStyle),
                kept(property<&C::GridSize, &C::setGridSize>("GridSize"),
                     binding::Variant(PanelDesign::DefaultGridSize)),
                kept(property<&C::SnapToGrid, &C::setSnapToGrid>("SnapToGrid"), Yes),
                kept(property<&C::LockPositions, &C::setLockPositions>("LockPositions"), Yes),
                readOnly<&C::Controls>("Controls"),
                property<&C::Logger, &C::setLogger>("Logger"),
                kept(property<&C::Stretch, &C::setStretch>("Stretch"), No),
                kept(property<&C::ShowSiteMap, &C::setShowSiteMap>("ShowSiteMap"), Yes),
                readOnly<&C::SiteMap>("SiteMap"),
                method<&C::Refresh>("Refresh"),
                property<&C::Picture, &C::setPicture>("Picture").stored(),
                kept(property<&C::PictureFile, &C::setPictureFile>("PictureFile"), binding::Variant(QString())),
                method<&C::LoadWindow>("LoadWindow"),
                method<&C::Clear>("Clear"),
                method<&C::SaveWindow>("SaveWindow"),
                kept(property<&C::LockMenu, &C::setLockMenu>("LockMenu"), No),
                property<&C::HideProtectedControls, &C::setHideProtectedControls>("HideProtectedControls"),
                property<&C::ECANHost, &C::setECANHost>("ECANHost"),
                property<&C::AlignmentGuides, &C::setAlignmentGuides>("AlignmentGuides"),
                property<&C::KeyboardEditing, &C::setKeyboardEditing>("KeyboardEditing"),
                method<&C::Undo>("Undo"),
                method<&C::Redo>("Redo"),
                readOnly<&C::CanUndo>("CanUndo"),
                readOnly<&C::CanRedo>("CanRedo"),
                readOnly<&C::UndoText>("UndoText"),
                readOnly<&C::RedoText>("RedoText"),
                readOnly<&C::EditCount>("EditCount"),
                readOnly<&C::CurrentWindow>("CurrentWindow"),
                method<&C::ShowProgress>("ShowProgress"),
                method<&C::ImportKeel>("ImportKeel"),
                readOnly<&C::Host>("Host"),
                method<&C::ShowAt>("ShowAt"),
                method<&C::ShowLive>("ShowLive"),
                readOnly<&C::IsLive>("IsLive"),
            });
    });
}

} // namespace zan::window
