#include "engine/PartList.h"

#include "runtime/RuntimeError.h"
#include "runtime/Text.h"

namespace zarn {

namespace {

template <typename Value>
const Value& Element(const std::vector<Value>& list, std::int32_t index) {
    if (index < 1 || static_cast<std::size_t>(index) > list.size()) {
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    }
    return list[static_cast<std::size_t>(index) - 1];
}

}  // namespace

void PartList::Reset() {
    paths_.assign(1, {});
    names_.assign(1, {});
    files_.assign(1, {});
}

void PartList::Add(std::string_view path, const FileIdentity& file) {
    paths_.back() = path;
    files_.back() = file;
    names_.back() = FunctionLastPathItem(path);
    paths_.emplace_back();
    names_.emplace_back();
    files_.emplace_back();
}

void PartList::BlankLastName() {
    names_[names_.size() - 2].clear();
}

std::int32_t PartList::UpperBound() const {
    return static_cast<std::int32_t>(paths_.size());
}

const std::string& PartList::Path(std::int32_t index) const {
    return Element(paths_, index);
}

const std::string& PartList::Name(std::int32_t index) const {
    return Element(names_, index);
}

const FileIdentity& PartList::File(std::int32_t index) const {
    return Element(files_, index);
}

}  // namespace zarn
