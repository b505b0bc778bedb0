#pragma once

#include <QVariantMap>
#include <algorithm>
#include <cstdint>
#include <limits>
#include <span>

class QObject;

namespace zarn {

/// A control's properties as a form stores them, by their stored names. A property at its default
/// is left out, and one that is missing reads as its default.
using PropertyBag = QVariantMap;

/// A property and the name under which it is stored.
struct StoredProperty {
    const char* property;
    const char* storedName;
};

/// Both go through `properties` in their order. `fresh` is a control as it is made; what its
/// properties read is their default.
void ReadStored(QObject& control, const QObject& fresh, std::span<const StoredProperty> properties,
                const PropertyBag& bag);
void WriteStored(const QObject& control, const QObject& fresh,
                 std::span<const StoredProperty> properties, PropertyBag& bag);

/// What a 16-bit property holds of a number: the nearest one that 16 bits can hold.
constexpr std::int16_t Nearest16(int value) {
    using Limits = std::numeric_limits<std::int16_t>;
    return static_cast<std::int16_t>(std::clamp<int>(value, Limits::min(), Limits::max()));
}

}  // namespace zarn
