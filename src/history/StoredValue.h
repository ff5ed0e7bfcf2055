#pragma once

#include "history/ByteText.h"
#include "values/Variant.h"

#include <QByteArrayView>

namespace zan::history {

using values::Variant;

// A value lies in a store as a byte for its kind and what that kind needs. Values go from thread to thread and from
// block to block as these bytes: a Variant belongs to one thread, and most values that are moved are never looked at.

/// Appends a value. What is no plain value (an object, an array, an error) is stored as Empty, a text longer than
/// 65,535 characters without its rest.
void putValue(QByteArray& bytes, const Variant& value);
/// Passes over a value; the bytes it took, empty when they are none.
QByteArrayView takeValue(ByteReader& reader);
/// The value of bytes that takeValue() gave.
Variant valueOf(QByteArrayView bytes);
/// The value as a number: false for what is none (Empty, Null, text, a Double without a finite value).
bool numberOf(QByteArrayView bytes, double& number);

/// The bytes of Empty.
QByteArrayView emptyValue();

} // namespace zan::history
