// Loads shape files of any content. Each is refused and leaves an empty shape, or a save writes the same
// nodes, bit for bit.
#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "editor/TunnelShape.h"
#include "editor/TunnelShapeFile.h"
#include "scratch_files.h"

using namespace boreforge;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string given = ScratchPath("given.zrbf");
    static const std::string saved = ScratchPath("saved.zrbf");
    WriteScratch(given, {data, size});
    MakePresetShape(kPresetBox);
    if (!LoadTunnelShape(given)) {
        Require(TunnelShape.NodeCount() == 0 && TunnelShape.OutsideNodes.empty());
        return 0;
    }
    Require(TunnelShape.InsideNodes.size() == TunnelShape.OutsideNodes.size());
    Require(SaveTunnelShape(saved));
    const auto bytes = ReadScratch(saved);
    const std::size_t nodes = TunnelShape.InsideNodes.size();
    Require(bytes.size() == 8 + 24 * nodes && bytes.size() <= size);
    Require(std::equal(bytes.begin() + 8, bytes.end(), data + 8));
    if (nodes > 0) Require(std::equal(bytes.begin() + 4, bytes.begin() + 8, data + 4));
    return 0;
}
