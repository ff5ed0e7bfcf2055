#pragma once

#include "script/compiler/Builtins.h"

#include "values/Convert.h"
#include "values/RuntimeError.h"

#include <QString>

namespace zan::script {

// The groups of built-in functions; each is one row of functions in a file of its own.
std::span<const Builtin> textFunctions() noexcept;
std::span<const Builtin> listFunctions() noexcept;
std::span<const Builtin> conversionFunctions() noexcept;
std::span<const Builtin> numberFunctions() noexcept;
std::span<const Builtin> dateFunctions() noexcept;
std::span<const Builtin> formatFunctions() noexcept;
std::span<const Builtin> informationFunctions() noexcept;
std::span<const Builtin> hostFunctions() noexcept;

/// True when the argument was given.
inline bool given(Arguments arguments, std::size_t place)
{
    return place < arguments.size() && !arguments[place].isMissing();
}

/// The argument as a Long, or the default when it was left out.
inline std::int32_t longOr(Arguments arguments, std::size_t place, std::int32_t otherwise)
{
    return given(arguments, place) ? values::toLong(arguments[place]) : otherwise;
}

inline QString textOr(Arguments arguments, std::size_t place, const QString& otherwise)
{
    return given(arguments, place) ? values::toText(arguments[place]) : otherwise;
}

/// The argument as a text, without a copy when it is one.
class TextArgument
{
public:
    explicit TextArgument(const Variant& value)
    {
        if (value.isText())
            m_text = &value.text();
        else
            m_made = values::toText(value);
    }
    TextArgument(const TextArgument&) = delete;
    TextArgument& operator=(const TextArgument&) = delete;
    const QString& operator*() const noexcept { return m_text ? *m_text : m_made; }
    const QString* operator->() const noexcept { return &**this; }

private:
    const QString* m_text = nullptr;
    QString m_made;
};

/// Error 5 unless the argument is as the function needs it.
inline void require(bool condition)
{
    if (!condition)
        values::raise(values::ErrorNumber::InvalidCall);
}

/// The compare argument of text functions: 0 by code, 1 without regard to case.
inline Qt::CaseSensitivity comparison(Arguments arguments, std::size_t place)
{
    const std::int32_t mode = longOr(arguments, place, 0);
    require(mode >= 0 && mode <= 2);
    return mode == 0 ? Qt::CaseSensitive : Qt::CaseInsensitive;
}

} // namespace zan::script
