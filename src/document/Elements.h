#pragma once

#include "values/Name.h"

/// Names of the window document's elements, each written once. Most are property names too: a document's element
/// sets the property of its name.
namespace zan::document::element {

inline const values::Name Window("WINDOW");
inline const values::Name Container("CONTAINER");
inline const values::Name Control("CONTROL");
inline const values::Name SiteMap("SITEMAP");
inline const values::Name Font("FONT");
inline const values::Name TitleFont("TITLEFONT");
inline const values::Name Filter("FILTER");
inline const values::Name UpperLimit("UPPERLIMIT");
inline const values::Name LowerLimit("LOWERLIMIT");
inline const values::Name UpperLabel("UPPERLABEL");
inline const values::Name LowerLabel("LOWERLABEL");
inline const values::Name Action("ACTION");
inline const values::Name Function("FUNCTION");
inline const values::Name Script("SCRIPT");
inline const values::Name PutValue("PUTVALUE");
inline const values::Name PutAddress("PUTADDRESS");
inline const values::Name PutDataType("PUTDATATYPE");
inline const values::Name ShowProgress("SHOWPROGRESS");
inline const values::Name CheckedValue("CHECKEDVALUE");
inline const values::Name UncheckedValue("UNCHECKEDVALUE");
inline const values::Name IgnoreScan("IGNORESCAN");
inline const values::Name Changed("CHANGED");

inline const values::Name Type("TYPE");
inline const values::Name Key("KEY");
inline const values::Name Index("INDEX");
inline const values::Name Left("LEFT");
inline const values::Name Top("TOP");
inline const values::Name Width("WIDTH");
inline const values::Name Height("HEIGHT");
inline const values::Name BackColor("BACKCOLOR");
inline const values::Name ForeColor("FORECOLOR");
inline const values::Name ToolTipText("TOOLTIPTEXT");
inline const values::Name Visible("VISIBLE");
inline const values::Name UseWindowSettings("USEWINDOWSETTINGS");
inline const values::Name ShowGrabHandles("SHOWGRABHANDLES");
inline const values::Name BindTo("BINDTO");
inline const values::Name PictureFile("PICTUREFILE");
inline const values::Name HideWhenProtected("HIDEWHENPROTECTED");

inline const values::Name BackStyle("BACKSTYLE");
inline const values::Name BorderStyle("BORDERSTYLE");
inline const values::Name GridSize("GRIDSIZE");
inline const values::Name SnapToGrid("SNAPTOGRID");
inline const values::Name Stretch("STRETCH");

inline const values::Name ShowLabels("SHOWLABELS");
inline const values::Name AddLabelSeperators("ADDLABELSEPERATORS"); // the spelling is the element's name

inline const values::Name Mode("MODE");
inline const values::Name Comparison("COMPARISON");
inline const values::Name CompareValue("COMPAREVALUE");
inline const values::Name Program("PROGRAM");
inline const values::Name HideWhenTrue("HIDEWHENTRUE");
inline const values::Name HideWhenFalse("HIDEWHENFALSE");
inline const values::Name TrueCaption("TRUECAPTION");
inline const values::Name FalseCaption("FALSECAPTION");
inline const values::Name TrueColour("TRUECOLOUR");
inline const values::Name FalseColour("FALSECOLOUR");
inline const values::Name Flash("FLASH");

inline const values::Name UncheckedCaption("UNCHECKEDCAPTION");
inline const values::Name CheckedCaption("CHECKEDCAPTION");

inline const values::Name BoundLimit("BOUNDLIMIT");
inline const values::Name LimitChannel("LIMITCHANNEL");
inline const values::Name LimitOffset("LIMITOFFSET");
inline const values::Name Min("MIN");
inline const values::Name Max("MAX");
inline const values::Name LowLimit("LOWLIMIT");
inline const values::Name HighLimit("HIGHLIMIT");
inline const values::Name LowColour("LOWCOLOUR");
inline const values::Name HighColour("HIGHCOLOUR");
inline const values::Name NormalColour("NORMALCOLOUR");
inline const values::Name Orientation("ORIENTATION");
inline const values::Name Scrolling("SCROLLING");

inline const values::Name Bold("BOLD");
inline const values::Name Charset("CHARSET");
inline const values::Name Italic("ITALIC");
inline const values::Name FontName("NAME");
inline const values::Name Size("SIZE");
inline const values::Name Strikethrough("STRIKETHROUGH");
inline const values::Name Underline("UNDERLINE");
inline const values::Name Weight("WEIGHT");

} // namespace zan::document::element
