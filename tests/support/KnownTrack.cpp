#include "support/KnownTrack.h"

#include <cstdint>
#include <string>

#include "support/CoreTest.h"

namespace boreforge {

namespace {

// Appends fields to a file. What isn't a tag, a size, a number of something or a text is zeros here; the
// golden cases have a value of its own in each field.
class Fields {
  public:
    explicit Fields(KnownTrack& track) : track_(track) {}

    Fields& Chunk(const std::string& tag, std::uint32_t size) {
        track_.chunks.push_back(track_.bytes.size());
        return Characters(tag).Size(size);
    }
    Fields& Size(std::uint32_t size) { return Noted(size, track_.sizes); }
    // A number of records, children or bytes.
    Fields& Count(std::uint32_t count) { return Noted(count, track_.counts); }
    // A text whose length may be negative in the file, and one whose length must not be.
    Fields& Text(const std::string& text) { return Noted(text.size(), track_.textLengths).Characters(text); }
    Fields& StrictText(const std::string& text) {
        return Count(static_cast<std::uint32_t>(text.size())).Characters(text);
    }
    Fields& Zeros(std::size_t count) { return Characters(std::string(count, '\0')); }
    Fields& Number(std::uint32_t value) {
        track_.bytes.resize(track_.bytes.size() + 4);
        Put32(track_.bytes, track_.bytes.size() - 4, value);
        return *this;
    }
    Fields& Tunnel() { return Characters("\xFF"); }

  private:
    Fields& Noted(std::size_t value, std::vector<std::size_t>& places) {
        places.push_back(track_.bytes.size());
        return Number(static_cast<std::uint32_t>(value));
    }
    Fields& Characters(const std::string& text) {
        track_.bytes.insert(track_.bytes.end(), text.begin(), text.end());
        return *this;
    }
    KnownTrack& track_;
};

void AddHeader(Fields f) {
    f.Chunk("ZPHR", 1965).Number(0x01030000).Zeros(16).Count(4);
    f.Chunk("TRCK", 1409).Zeros(4).Count(2).Zeros(4);
    f.Zeros(8).Text("Red").Zeros(16).Zeros(8).Text("").Zeros(16).Zeros(48).Count(4);
    f.Chunk("INFO", 29).Zeros(16).Text("info\xFF").Count(0);
}

void AddPath(Fields f) {
    f.Chunk("BEZR", 160).Zeros(16).Count(2).Zeros(60).Zeros(60).Zeros(16).Count(0);
    // One segment of each kind, and one of an unknown kind, which has no block.
    f.Chunk("SEGM", 499).Count(6).Zeros(17);
    f.Number(0).Zeros(13).Tunnel().Zeros(15).Size(0);
    f.Number(1).Zeros(13).Zeros(16).Size(126).Zeros(126);
    f.Number(2).Zeros(13).Zeros(16).Size(36).Zeros(36);
    f.Number(3).Zeros(13).Zeros(16).Size(28).Zeros(28);
    f.Number(4).Zeros(13).Zeros(16).Size(50).Zeros(50);
    f.Number(9).Zeros(13).Zeros(16);
    f.Zeros(16).Count(0);
}

void AddStructures(Fields f) {
    f.Chunk("SUPP", 566).Zeros(32).Count(5);
    f.Chunk("FUND", 132).Zeros(16).Count(1).Zeros(92).Zeros(16).Count(0);
    f.Chunk("RASC", 96).Zeros(16).Count(2).Count(0).Count(2).Zeros(48).Zeros(16).Count(0);
    f.Chunk("FREN", 68).Zeros(16).Count(1).Zeros(28).Zeros(16).Count(0);
    f.Chunk("TUBE", 88).Zeros(16).Count(1).Zeros(48).Zeros(16).Count(0);
    f.Chunk("CATW", 106)
        .Zeros(16)
        .Count(2)
        .Zeros(24)
        .Count(0)
        .Zeros(24)
        .Count(10)
        .Zeros(10)
        .Zeros(16)
        .Count(0);
}

void AddScenery(Fields f) {
    f.Chunk("SCEN", 339).Zeros(16).Count(1).Zeros(64).Zeros(16).Count(1);
    f.Chunk("SCOB", 227).Zeros(16).Count(2);
    f.StrictText("tree").StrictText("oak.3ds").Zeros(80);
    f.StrictText("").StrictText("").Zeros(80).Zeros(16).Count(0);
    f.Chunk("TERA", 114).Count(2).Count(3).Zeros(8).StrictText("grass").Zeros(4).StrictText("").Zeros(9);
    f.StrictText("rock").Zeros(20).Zeros(2 * 3 * 4).Zeros(16).Count(0);
    f.Chunk("ENVC", 47).Zeros(16).Text("sky").Text("").Zeros(16).Count(0);
}

}  // namespace

KnownTrack MakeKnownTrack() {
    KnownTrack track;
    const Fields fields(track);
    AddHeader(fields);
    AddPath(fields);
    AddStructures(fields);
    AddScenery(fields);
    return track;
}

}  // namespace boreforge
