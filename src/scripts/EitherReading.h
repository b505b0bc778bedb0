#pragma once

#include <string_view>

#include "runtime/CodePage.h"
#include "runtime/Text.h"

namespace zarn {

/// Reads the text of a file by the one rule for bytes that are no text. Valid UTF-8 is taken as
/// that, all else as Windows-1252. But a name that is no valid UTF-8 stands in the file as its
/// bytes are, and these are Windows-1252 too. So the files that are there decide: if the decoded
/// text does not fit them, and the bytes as they stand do, those are the text.
///
/// `read` is called with a text, which it does not keep, and returns what is read from it; `fits`
/// is called with that, and says whether it names files that are there.
template <typename Read, typename Fits>
[[nodiscard]] auto ReadEitherWay(std::string_view bytes, const Read& read, const Fits& fits) {
    auto decoded = read(DecodeText(bytes));
    if (IsUtf8(bytes) || fits(decoded)) {
        return decoded;
    }
    if (auto raw = read(WithoutByteOrderMark(bytes)); fits(raw)) {
        return raw;
    }
    return decoded;
}

}  // namespace zarn
