#pragma once

#include <QString>

#include <span>

namespace zan::halyard {

/// A named curve between a scaled value and the value shown. Both directions are not finite where the curve has no
/// point.
struct Formula
{
    const char* name;
    double (*forward)(double);
    double (*inverse)(double);
};

/// Every formula, in order of name.
std::span<const Formula> formulas();
/// The formula of a name; case and blanks do not count. Null for an empty or unknown name, which leaves values as
/// they are: a panel whose scheme names a formula of another system still shows its scaled value.
const Formula* findFormula(const QString& name);

} // namespace zan::halyard
