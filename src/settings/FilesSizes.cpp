#include <cmath>

#include "runtime/ByteUnits.h"
#include "runtime/Numbers.h"
#include "runtime/Text.h"
#include "settings/Files.h"

namespace zarn {

std::string Files::FileSizeText(std::string_view path) {
    constexpr double MostInBytes = 1000;
    constexpr double MostInKilobytes = 1'000'000;
    constexpr double MostInMegabytes = 1'000'000'000;
    const double size = FileExist(path) ? fileSystem_.FileSize(path) : 0;
    if (size == 0) {
        return {};
    }
    const std::string bytes = StandardText(size, separators_) + " Bytes";
    std::string text = "size : ";
    if (size <= MostInBytes) {
        return text + bytes;
    }
    if (size <= MostInKilobytes) {
        text += StandardText(size / BytesInKilobyte, separators_) + " KB ";
    } else if (size <= MostInMegabytes) {
        text += StandardText(size / BytesInMegabyte, separators_) + " MB ";
    } else {
        text += StandardText(size / BytesInGigabyte, separators_) + " GB ";
    }
    text += '(' + bytes + ')';
    return Replace(Replace(text, ".00 Bytes)", " Bytes)"), ",00 Bytes)", " Bytes)");
}

double Files::FileSizeGBytes(std::string_view path) {
    constexpr double Least = 0.01;
    if (Trim(path).empty() || !FileExist(path)) {
        return 0;
    }
    const double gigabytes = fileSystem_.FileSize(path) / BytesInGigabyte;
    // Read back with a decimal point whatever the locale: a comma ends the number.
    if (NumberPrefix(NumberText(gigabytes, separators_)) >= Least) {
        return RoundHalfEven(gigabytes, 2);
    }
    messages_.Error("Current file is too small for (Gb), (Mb) will be used ... ");
    std::string parts;
    if (pieceSizeFields_ != nullptr) {
        pieceSizeFields_->SelectOptMB();
        parts = pieceSizeFields_->txtPartsNumber();
    }
    const double megabytes = FileSizeMBytes(path);
    return NumberPrefix(parts) <= 0 ? megabytes : megabytes / NumberFromText(parts, separators_);
}

double Files::FileSizeMBytes(std::string_view path) {
    if (Trim(path).empty() || !FileExist(path)) {
        return 0;
    }
    return RoundHalfEven(fileSystem_.FileSize(path) / BytesInMegabyte, 2);
}

bool Files::CheckFileSize(std::string_view path) {
    constexpr double Least = 1.0 / 100;
    return Trim(path).empty() || FileSizeMBytes(path) >= Least;
}

std::string Files::FunctionFileSizeGrid(std::string_view path) {
    if (!FileExist(path)) {
        return "***";
    }
    double size = fileSystem_.FileSize(path);
    return FunctionFileSizeFormated(size);
}

std::string Files::FunctionFileSizeFormated(double& size) const {
    constexpr double MostInBytes = 999;
    const double whole = std::trunc(size);
    if (whole >= 0 && whole <= MostInBytes) {
        return NumberText(whole, separators_) + " Bytes";
    }
    size /= BytesInKilobyte;
    if (size != std::trunc(size)) {
        size = RoundHalfEven(size, 0) + 1;
    }
    return GroupedText(size, separators_) + " KB";
}

std::string Files::FunctionFileJoinConvertSize(const double& size) const {
    constexpr double AlmostOne = 0.99999999;
    if (const double gigabytes = size / BytesInGigabyte; gigabytes > AlmostOne) {
        return StandardText(gigabytes, separators_) + " GB";
    }
    if (const double megabytes = size / BytesInMegabyte; megabytes > AlmostOne) {
        return StandardText(megabytes, separators_) + " MB";
    }
    if (const double kilobytes = size / BytesInKilobyte; kilobytes > AlmostOne) {
        return StandardText(kilobytes, separators_) + " KB";
    }
    return StandardText(size, separators_) + " Bytes";
}

double Files::FunctionFileJoinSize(std::string_view path) {
    return FileExist(path) ? std::trunc(fileSystem_.FileSize(path)) : 0;
}

}  // namespace zarn
