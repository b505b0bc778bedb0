#pragma once

#include <QImage>
#include <QPixmap>
#include <QWidget>

#include "controls/PropertyBag.h"
#include "support/Prelude.h"

namespace zarn::testing {

/// What a control looks like now.
inline QImage PictureOf(QWidget& control) {
    return control.grab().toImage();
}

/// Collects pictures and reports any two that are the same.
class DistinctPictures {
  public:
    void Add(QWidget& control, const std::string& name) {
        const QImage picture = PictureOf(control);
        for (const auto& [other, otherName] : pictures_) {
            EXPECT_NE(picture, other) << name << " looks like " << otherName;
        }
        pictures_.emplace_back(picture, name);
    }
    /// The same with a property set first.
    void Set(QWidget& control, const char* property, const QVariant& value) {
        control.setProperty(property, value);
        Add(control, std::string(property) + " " + value.toString().toStdString());
    }

  private:
    std::vector<std::pair<QImage, std::string>> pictures_;
};

/// A control takes what is stored and stores that again; without anything it stores nothing.
template <typename Control>
void ExpectComesBack(Control& control, const PropertyBag& bag) {
    control.ReadProperties(bag);
    PropertyBag written = {{bag.firstKey(), "old"}};
    control.WriteProperties(written);
    EXPECT_EQ(written.keys(), bag.keys());
    for (const auto& [key, value] : bag.asKeyValueRange()) {
        const QVariant other = written.value(key);
        const auto picture = value.template value<QPixmap>().cacheKey();
        EXPECT_TRUE(picture == 0 ? other == value
                                 : other.template value<QPixmap>().cacheKey() == picture)
            << key.toStdString();
    }
    control.ReadProperties({});
    control.WriteProperties(written);
    EXPECT_TRUE(written.isEmpty()) << written.firstKey().toStdString();
}

}  // namespace zarn::testing
