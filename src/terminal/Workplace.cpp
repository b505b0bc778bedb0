#include "terminal/Workplace.h"

#include "terminal/Sizes.h"

namespace zarn {

std::string Workplace::LacksRoom(const UserFolder& folder, double bytes) const {
    const DiskFreeSpaceEx space = shared.Platform().volumes->FreeSpaceIn(folder.path);
    const auto free = static_cast<double>(space.freeToCaller);
    return space.total == 0 || free >= bytes
               ? std::string()
               : "there is too little room: " + SizeText(bytes) + " are needed, and " +
                     SizeText(free) + " are free";
}

}  // namespace zarn
