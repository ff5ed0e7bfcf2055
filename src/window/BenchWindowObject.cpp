#include "window/BenchWindowObject.h"

#include "display/SiteMapControl.h"

namespace zan::window {

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
                property<&C::BackColor, &C::setBackColor>("BackColor"),
                property<&C::ForeColor, &C::setForeColor>("ForeColor"),
                property<&C::Enabled, &C::setEnabled>("Enabled"),
                property<&C::Font, &C::setFont>("Font"),
                property<&C::BackStyle, &C::setBackStyle>("BackStyle"),
                property<&C::BorderStyle, &C::setBorderStyle>("BorderStyle"),
                property<&C::GridSize, &C::setGridSize>("GridSize"),
                property<&C::SnapToGrid, &C::setSnapToGrid>("SnapToGrid"),
                property<&C::LockPositions, &C::setLockPositions>("LockPositions"),
                readOnly<&C::Controls>("Controls"),
                property<&C::Logger, &C::setLogger>("Logger"),
                property<&C::Stretch, &C::setStretch>("Stretch"),
                property<&C::ShowSiteMap, &C::setShowSiteMap>("ShowSiteMap"),
                readOnly<&C::SiteMap>("SiteMap"),
                method<&C::Refresh>("Refresh"),
                property<&C::Picture, &C::setPicture>("Picture"),
                property<&C::PictureFile, &C::setPictureFile>("PictureFile"),
                method<&C::LoadWindow>("LoadWindow"),
                method<&C::Clear>("Clear"),
                method<&C::SaveWindow>("SaveWindow"),
                property<&C::LockMenu, &C::setLockMenu>("LockMenu"),
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
            });
    });
}

} // namespace zan::window
