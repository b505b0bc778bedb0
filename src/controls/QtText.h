#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace zarn {

/// The toolkit's form of a text and back. Bytes that are no part of valid UTF-8 become single
/// surrogates (U+DC80 to U+DCFF) and come back as they were, so that no file name is lost.
[[nodiscard]] QString ToQt(std::string_view text);
[[nodiscard]] std::string FromQt(const QString& text);

}  // namespace zarn
