// Loads track files of any content. Each is refused and leaves an empty document, or is saved, and a second
// save returns the same bytes.
#include <cstddef>
#include <cstdint>

#include "scratch_files.h"
#include "trackfile/TrackDocument.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"

using namespace boreforge;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string given = ScratchPath("given.zrtrack");
    static const std::string first = ScratchPath("first.zrtrack");
    static const std::string second = ScratchPath("second.zrtrack");
    WriteScratch(given, {data, size});
    if (!ReadTrackFile(given)) {
        Require(TrackFile.Segments.empty() && TrackFile.BezierNodes.empty() && TrackFile.ZphrSize == 0);
        return 0;
    }
    Require(WriteTrackFile(first));
    const auto saved = ReadScratch(first);
    Require(saved.size() == static_cast<std::size_t>(TrackFile.ZphrSize) + 8);
    Require(ReadTrackFile(first));
    Require(WriteTrackFile(second));
    Require(ReadScratch(second) == saved);
    return 0;
}
