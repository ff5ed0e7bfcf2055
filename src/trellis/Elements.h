#pragma once

#include "document/Elements.h"

/// Names of the elements that the store itself reads or writes. All others pass through untouched.
namespace zan::trellis::element {

using document::element::Changed;
using document::element::Key;
using document::element::Visible;
using document::element::Window;

inline const values::Name Scheme("SCHEME");
inline const values::Name SchemeName("NAME");
inline const values::Name Logger("LOGGER");
inline const values::Name History("HISTORY");
inline const values::Name Channel("CHANNEL");
inline const values::Name Label("LABEL");
inline const values::Name Units("UNITS");
inline const values::Name Format("FORMAT");
inline const values::Name BaseAddress("BASEADDRESS");
inline const values::Name DataType("DATATYPE");
inline const values::Name Bytes("BYTES");
inline const values::Name Multiplier("MULTIPLIER");
inline const values::Name Offset("OFFSET");
inline const values::Name Formula("FORMULA");
inline const values::Name Cdt("CDT");

} // namespace zan::trellis::element
