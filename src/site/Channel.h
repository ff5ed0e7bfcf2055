#pragma once

#include "binding/Object.h"
#include "document/Node.h"
#include "values/Variant.h"

#include <QString>

#include <cstdint>

namespace zan::site {

using binding::Ref;
using binding::Variant;

/// One value of a logger: where it lies in the logger's memory, how raw becomes value, how it is shown, and what it
/// is at this moment. A channel belongs to one SchemeWindow. Parameters may be kept in a document node; a host
/// that stores them elsewhere implements the accessors its own way.
class Channel : public binding::Object
{
public:
    virtual std::int32_t BaseAddress() const = 0; ///< negative: internal, not offered for binding
    virtual void setBaseAddress(std::int32_t address) = 0;
    virtual bool CDT() const = 0; ///< protected
    virtual void setCDT(bool isProtected) = 0;
    virtual std::int32_t DataType() const = 0; ///< index into dataTypeNames(), 0 to 8
    virtual void setDataType(std::int32_t type) = 0;
    virtual std::int16_t Bytes() const = 0; ///< length of a string channel; of the others their size
    virtual void setBytes(std::int16_t bytes) = 0;
    virtual float Multiplier() const = 0;
    virtual void setMultiplier(float multiplier) = 0;
    virtual float Offset() const = 0;
    virtual void setOffset(float offset) = 0;
    virtual QString Formula() const = 0; ///< name of a formula, empty for none
    virtual void setFormula(const QString& formula) = 0;
    virtual QString Label() const = 0;
    virtual void setLabel(const QString& label) = 0;
    virtual QString Format() const = 0; ///< user format text of the display
    virtual void setFormat(const QString& format) = 0;
    virtual QString Units() const = 0;
    virtual void setUnits(const QString& units) = 0;
    virtual bool Visible() const = 0;
    virtual void setVisible(bool visible) = 0;

    /// The current value; Empty while nothing has been read. Changes on the user-interface thread only, before
    /// the event that announces it.
    virtual const Variant& Value() const = 0;
    /// For the link library: the value that the next event announces.
    virtual void setValue(const Variant& value) = 0;

    virtual QString Key() const = 0;
    virtual std::int16_t UseCount() const = 0; ///< how many bindings hold the channel; not stored
    virtual void setUseCount(std::int16_t count) = 0;
    /// The channel's node; the KEY of its parent is the window's key. Null when the channel has none.
    virtual document::Node XMLNode() const = 0;

    const binding::MemberTable& members() const override;
};

/// The nine data types, in index order: "Unsigned Byte" ... "Double Prec FP".
enum class DataType : std::int32_t {
    UnsignedByte,
    SignedByte,
    UnsignedWord,
    SignedWord,
    UnsignedLong,
    SignedLong,
    String,
    Single,
    Double,
};
inline constexpr int DataTypeCount = 9;
/// Display name of a data type; empty outside 0 to 8.
QString dataTypeName(std::int32_t type);

} // namespace zan::site
