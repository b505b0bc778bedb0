#pragma once

#include <gtest/gtest.h>

#include <QImage>
#include <QPixmap>
#include <QWidget>
#include <string>
#include <utility>
#include <vector>

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

  private:
    std::vector<std::pair<QImage, std::string>> pictures_;
};

}  // namespace zarn::testing
