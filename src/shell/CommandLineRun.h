#pragma once

#include <string>

#include "settings/SharedObjects.h"

namespace zarn {

/// Carries out one unattended run: reads the switches of `line`, which becomes the normalised
/// line, and splits the file that they name. An error in them is one message, and the run ends
/// with nothing written except the destination folder. A completed run says nothing.
///
/// With `/C` the source is compressed first and the archive is cut; see
/// `SplitterEngine::CompressSource`.
///
/// Before `/DS` deletes the source, parts and join script are on the medium. `/DP`, or its absence,
/// holds as the setting for this run and no longer, except that a `/TEST` run leaves the setting as
/// the line asked for it.
/// Raises what `CompressSource` and that flush raise, and overflow for a number beyond 32
/// bits.
void RunCommandLine(std::string& line, SharedObjects& shared);

}  // namespace zarn
