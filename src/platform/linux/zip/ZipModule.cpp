#include "platform/linux/zip/ZipModule.h"

#include <sys/stat.h>
#include <unistd.h>
#include <zip.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <memory>

namespace zarn {

namespace {

constexpr std::int32_t AllPercent = 100;

// The bytes to compress, as libzip asks for them. Percents are counted here: libzip's own figure
// counts the bytes that compression leaves, and so jumps from next to nothing to the end.
class Input {
  public:
    explicit Input(const ZipModuleOrder& order) : order_(order) {
        zip_error_init(&error_);
        isReadable_ = fstat(order.source, &status_) == 0;
    }
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;
    ~Input() { zip_error_fini(&error_); }

    [[nodiscard]] bool IsReadable() const { return isReadable_; }
    [[nodiscard]] mode_t Mode() const { return status_.st_mode; }

    // A zip_source_callback; see libzip's zip_source_function(3).
    static zip_int64_t Answer(void* input, void* data, zip_uint64_t length,
                              zip_source_cmd_t command) {
        return static_cast<Input*>(input)->Do(data, length, command);
    }

  private:
    zip_int64_t Do(void* data, zip_uint64_t length, zip_source_cmd_t command) {
        switch (command) {
            case ZIP_SOURCE_OPEN:
                done_ = 0;
                return 0;
            case ZIP_SOURCE_READ:
                return Read(data, length);
            case ZIP_SOURCE_STAT:
                return Describe(*static_cast<zip_stat_t*>(data));
            case ZIP_SOURCE_ERROR:
                return zip_error_to_data(&error_, data, length);
            case ZIP_SOURCE_CLOSE:
            case ZIP_SOURCE_FREE:
                return 0;
            case ZIP_SOURCE_SUPPORTS:
                return zip_source_make_command_bitmap(ZIP_SOURCE_OPEN, ZIP_SOURCE_READ,
                                                      ZIP_SOURCE_CLOSE, ZIP_SOURCE_STAT,
                                                      ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE, -1);
            default:
                zip_error_set(&error_, ZIP_ER_OPNOTSUPP, 0);
                return -1;
        }
    }

    zip_int64_t Read(void* data, zip_uint64_t length) {
        ssize_t count = -1;
        do {
            count = pread(order_.source, data, length, done_);
        } while (count < 0 && errno == EINTR);
        if (count < 0) {
            zip_error_set(&error_, ZIP_ER_READ, errno);
            return -1;
        }
        done_ += count;
        if (!order_.mayGoOn(order_.listener) || !TellPercent(count == 0)) {
            zip_error_set(&error_, ZIP_ER_CANCELLED, 0);
            return -1;
        }
        return count;
    }

    bool TellPercent(bool atEnd) {
        const std::int32_t percent = atEnd ? AllPercent : Percent();
        if (percent == percent_) {
            return true;
        }
        percent_ = percent;
        return order_.percentDone(order_.listener, percent);
    }

    // The file may be growing, or not know its size.
    [[nodiscard]] std::int32_t Percent() const {
        if (done_ >= status_.st_size) {
            return AllPercent;
        }
        return static_cast<std::int32_t>(static_cast<double>(done_) /
                                         static_cast<double>(status_.st_size) * AllPercent);
    }

    zip_int64_t Describe(zip_stat_t& description) {
        zip_stat_init(&description);
        description.size = static_cast<zip_uint64_t>(status_.st_size);
        description.mtime = std::clamp(status_.st_mtime, Earliest, Latest);
        description.valid = ZIP_STAT_SIZE | ZIP_STAT_MTIME;
        return sizeof(description);
    }

    // What the entry's date can hold, 1980 to 2107, in every time zone.
    static constexpr time_t Earliest = 315'619'200;
    static constexpr time_t Latest = 4'354'732'799;

    const ZipModuleOrder& order_;
    zip_error_t error_{};
    struct stat status_ = {};
    bool isReadable_ = false;
    zip_int64_t done_ = 0;
    std::int32_t percent_ = 0;
};

using Archive = std::unique_ptr<zip_t, void (*)(zip_t*)>;

// The number of the new entry, negative on failure. A name that is no UTF-8 goes in byte by byte.
zip_int64_t AddEntry(zip_t& archive, const char* name, Input& input) {
    zip_source_t* source = zip_source_function(&archive, Input::Answer, &input);
    if (source == nullptr) {
        return -1;
    }
    zip_int64_t entry = zip_file_add(&archive, name, source, ZIP_FL_ENC_UTF_8);
    if (entry < 0) {
        entry = zip_file_add(&archive, name, source, ZIP_FL_ENC_CP437);
    }
    if (entry < 0) {
        zip_source_free(source);
    }
    return entry;
}

bool DescribeEntry(zip_t& archive, zip_uint64_t entry, const ZipModuleOrder& order, mode_t mode) {
    constexpr unsigned ModeShift = 16;  // the upper half holds st_mode, as Info-ZIP writes it
    const zip_int32_t method = order.level == 0 ? ZIP_CM_STORE : ZIP_CM_DEFLATE;
    return zip_set_file_compression(&archive, entry, method,
                                    static_cast<zip_uint32_t>(order.level)) == 0 &&
           zip_file_set_external_attributes(&archive, entry, 0, ZIP_OPSYS_UNIX,
                                            mode << ModeShift) == 0 &&
           (order.password == nullptr ||
            zip_file_set_encryption(&archive, entry, ZIP_EM_AES_256, order.password) == 0);
}

constexpr std::size_t PieceSize = std::size_t{64} * 1024;
using Piece = std::array<std::byte, PieceSize>;

// The next bytes of the source are those, and there are as many.
bool SourceGoesOn(Input& input, const Piece& unpacked, std::size_t count) {
    Piece piece;
    std::size_t filled = 0;
    while (filled < count) {
        const zip_int64_t got =
            Input::Answer(&input, &piece[filled], count - filled, ZIP_SOURCE_READ);
        if (got <= 0) {
            return false;
        }
        filled += static_cast<std::size_t>(got);
    }
    return std::equal(piece.begin(), piece.begin() + static_cast<std::ptrdiff_t>(count),
                      unpacked.begin());
}

using Entry = std::unique_ptr<zip_file_t, int (*)(zip_file_t*)>;

}  // namespace

// The library compares the checksum at the end of the entry.
bool ZarnZipHolds(const ZipModuleOrder& order) noexcept {
    Input input(order);
    int error = 0;
    const Archive archive(zip_open(order.archive, ZIP_RDONLY, &error), zip_discard);
    if (!archive || !input.IsReadable() ||
        (order.password != nullptr &&
         zip_set_default_password(archive.get(), order.password) != 0)) {
        return false;
    }
    const Entry entry(zip_fopen_index(archive.get(), 0, 0), zip_fclose);
    Piece piece;
    zip_int64_t got = entry ? 1 : -1;
    while (got > 0 && (got = zip_fread(entry.get(), piece.data(), piece.size())) > 0) {
        if (!SourceGoesOn(input, piece, static_cast<std::size_t>(got))) {
            return false;
        }
    }
    std::byte more{};
    return got == 0 && Input::Answer(&input, &more, 1, ZIP_SOURCE_READ) == 0;
}

bool ZarnWriteZip(const ZipModuleOrder& order) noexcept {
    Input input(order);
    int error = 0;
    Archive archive(zip_open(order.archive, ZIP_CREATE | ZIP_TRUNCATE, &error), zip_discard);
    if (!archive || !input.IsReadable()) {
        return false;
    }
    const zip_int64_t entry = AddEntry(*archive, order.entryName, input);
    if (entry < 0 ||
        !DescribeEntry(*archive, static_cast<zip_uint64_t>(entry), order, input.Mode())) {
        return false;
    }
    if (zip_close(archive.get()) != 0) {
        return false;
    }
    static_cast<void>(archive.release());  // closed, and gone with that
    return true;
}

}  // namespace zarn
