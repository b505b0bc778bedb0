#include "controls/PropertyBag.h"

#include <QObject>
#include <QPixmap>

namespace zarn {

namespace {

/// Pictures have no equality of their own: the same picture is one, and no picture is no picture.
bool IsSame(const QVariant& one, const QVariant& other) {
    if (one.metaType() == QMetaType::fromType<QPixmap>()) {
        return one.value<QPixmap>().cacheKey() == other.value<QPixmap>().cacheKey();
    }
    return one == other;
}

}  // namespace

void ReadStored(QObject& control, const QObject& fresh, std::span<const StoredProperty> properties,
                const PropertyBag& bag) {
    for (const auto& [property, storedName] : properties) {
        control.setProperty(property, bag.value(storedName, fresh.property(property)));
    }
}

void WriteStored(const QObject& control, const QObject& fresh,
                 std::span<const StoredProperty> properties, PropertyBag& bag) {
    for (const auto& [property, storedName] : properties) {
        const QVariant value = control.property(property);
        if (IsSame(value, fresh.property(property))) {
            bag.remove(storedName);
        } else {
            bag.insert(storedName, value);
        }
    }
}

}  // namespace zarn
