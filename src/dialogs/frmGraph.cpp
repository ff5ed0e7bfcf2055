#include "dialogs/FormSteps.h"
#include "dialogs/SetupForms.h"

/// "Edit Graph Setup": the limit lines of a graph.
namespace zan::dialogs {

namespace {

const values::Name UpperLimitLine("UpperLimitLine");
const values::Name UpperLimitLabel("UpperLimitLabel");
const values::Name LowerLimitLine("LowerLimitLine");
const values::Name LowerLimitLabel("LowerLimitLabel");

constexpr FieldRow fields[] = {
    {.name = u"txtUpper",
     .kind = FieldKind::Text,
     .caption = u"Upper Limit Position",
     .text = u"0",
     .at = At::Wrapper,
     .value = &UpperLimitLine,
     .as = As::Double},
    {.name = u"txtUpperLabel",
     .kind = FieldKind::Text,
     .caption = u"Upper Limit Label",
     .at = At::Wrapper,
     .value = &UpperLimitLabel},
    {.name = u"txtLower",
     .kind = FieldKind::Text,
     .caption = u"Lower Limit Position",
     .text = u"0",
     .at = At::Wrapper,
     .value = &LowerLimitLine,
     .as = As::Double},
    {.name = u"txtLowerLabel",
     .kind = FieldKind::Text,
     .caption = u"Lower Limit Label",
     .at = At::Wrapper,
     .value = &LowerLimitLabel},
    cancelButton,
    okButton,
};

constexpr Step fill[] = {load(u"txtUpper"), load(u"txtLower"), load(u"txtUpperLabel"), load(u"txtLowerLabel")};
constexpr Step apply[] = {put(u"txtLower"), put(u"txtUpper"), put(u"txtLowerLabel"), put(u"txtUpperLabel")};

} // namespace

const FormDescription frmGraph{
    .name = u"frmGraph",
    .title = u"Edit Graph Setup",
    .width = 4035,
    .height = 3150,
    .fields = fields,
    .fill = fill,
    .usesWindows = false,
    .apply = apply,
};

} // namespace zan::dialogs
