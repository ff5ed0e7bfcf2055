#pragma once

#include "values/Name.h"

/// Names that setup forms read and write besides the document's own elements: properties of live controls and of
/// channels, which are elements of the document too where a control stores them.
namespace zan::dialogs::name {

inline const values::Name Caption("CAPTION");
inline const values::Name Text("TEXT");
inline const values::Name Picture("Picture");

// Of a channel.
inline const values::Name Label("Label");
inline const values::Name Units("Units");
inline const values::Name Visible("Visible");
inline const values::Name DataType("DataType");
inline const values::Name BaseAddress("BaseAddress");
inline const values::Name Cdt("CDT");
inline const values::Name Bytes("Bytes");
inline const values::Name Multiplier("Multiplier");
inline const values::Name Offset("Offset");
inline const values::Name Formula("Formula");
inline const values::Name Format("Format");

} // namespace zan::dialogs::name
