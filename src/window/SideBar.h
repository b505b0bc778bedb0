#pragma once

#include <QScrollArea>
#include <QVBoxLayout>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "controls/Colours.h"

namespace zarn {

/// A list of groups, the bars, each with a title that opens and closes it and with items that
/// carry a key. What has no room scrolls. Titles and items are reached by the keyboard too.
class SideBar : public QScrollArea {
    Q_OBJECT

  public:
    struct BarColours {
        ColourValue body;
        ColourValue titleFar;   ///< the right end of the title
        ColourValue titleNear;  ///< its left end, below the text
        bool lightText;         ///< whether the title's text is white
    };

    explicit SideBar(QWidget* parent = nullptr);
    SideBar(const SideBar&) = delete;
    SideBar& operator=(const SideBar&) = delete;
    ~SideBar() override;

    /// Adds an open bar below the others. Its title becomes the control "Bar_" and the key.
    void AddBar(std::string_view key, std::string_view title, BarColours colours);

    /// Adds an item to the last bar. "&" stands ahead of the caption's mnemonic, "&&" for a single
    /// one; the icon may be empty. Returns the item, which becomes the control "Item_" and the key.
    QWidget& AddItem(std::string_view key, std::string_view caption, std::string_view icon);

    /// Adds an item to the last bar that hosts a control, whose owner the bar becomes.
    void AddControl(QWidget& control);

    /// A bar, named by a key of `AddBar`, is open in state 1 and closed in every other.
    [[nodiscard]] int State(std::string_view barKey) const;
    void State(std::string_view barKey, int value);

  signals:
    void ItemClick(const std::string& key);

  private:
    struct Bar;

    [[nodiscard]] Bar& Find(std::string_view barKey) const;

    QWidget content_;
    QVBoxLayout layout_;
    std::vector<std::unique_ptr<Bar>> bars_;
};

}  // namespace zarn
