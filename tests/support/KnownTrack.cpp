#include "support/KnownTrack.h"

#include <bit>
#include <initializer_list>
#include <utility>

#include "base/Values.h"

namespace boreforge {

namespace {

// Appends fields to a file.
class Fields {
  public:
    explicit Fields(const KnownTrackStyle& style) : style_(style) {}

    Fields& Tag(const std::string& tag) {
        track_.chunks.push_back(track_.bytes.size());
        return Characters(style_.lowerCaseTags ? ToLowerAscii(tag) : tag);
    }
    Fields& Size(std::uint32_t size) {
        track_.sizes.push_back(track_.bytes.size());
        return Number(style_.size.value_or(size));
    }
    Fields& Version() { return Number(style_.version); }
    // A number of records, children or bytes.
    Fields& Count(std::uint32_t count) {
        track_.counts.push_back(track_.bytes.size());
        return Number(count);
    }
    Fields& Int(std::int32_t value) { return Number(static_cast<std::uint32_t>(value)); }
    Fields& Ints(std::initializer_list<std::int32_t> values) {
        for (const std::int32_t value : values)
            Int(value);
        return *this;
    }
    Fields& Floats(std::initializer_list<float> values) {
        for (const float value : values)
            Number(std::bit_cast<std::uint32_t>(value));
        return *this;
    }
    Fields& Byte(std::uint8_t value) {
        track_.bytes.push_back(value);
        return *this;
    }
    Fields& Flag(bool value) { return Byte(value ? style_.trueFlag : 0); }
    Fields& Colors(std::initializer_list<std::uint32_t> colors) {
        for (const std::uint32_t color : colors)
            Number(std::uint32_t{style_.colorTop} << 24 | color);
        return *this;
    }
    Fields& Reserved(std::size_t count) {
        track_.bytes.insert(track_.bytes.end(), count, style_.reserved);
        return *this;
    }
    // A text whose length may be negative in the file.
    Fields& Text(const std::string& text) {
        track_.textLengths.push_back(track_.bytes.size());
        return Number(static_cast<std::uint32_t>(text.size())).Characters(text);
    }
    // A text whose length must not be negative.
    Fields& StrictText(const std::string& text) {
        return Count(static_cast<std::uint32_t>(text.size())).Characters(text);
    }
    KnownTrack Take() { return std::move(track_); }

  private:
    Fields& Number(std::uint32_t value) {
        for (const int shift : {24, 16, 8, 0})
            Byte(static_cast<std::uint8_t>(value >> shift));
        return *this;
    }
    Fields& Characters(const std::string& text) {
        track_.bytes.insert(track_.bytes.end(), text.begin(), text.end());
        return *this;
    }
    const KnownTrackStyle style_;
    KnownTrack track_;
};

void AddHeader(Fields& f) {
    f.Tag("ZPHR").Size(1965).Version().Reserved(16).Count(4);

    f.Tag("TRCK").Size(1409).Int(17).Count(2).Int(-2);
    f.Flag(true).Reserved(7).Text("Red").Colors({0x010203, 0x040506, 0x070809, 0x0A0B0C});
    f.Flag(false).Reserved(7).Text("").Colors({0x111213, 0x141516, 0x171819, 0x1A1B1C});
    f.Colors({0x202122, 0x232425, 0x262728});
    f.Colors({0x303132, 0x333435, 0x363738, 0x393A3B, 0x3C3D3E}).Reserved(16).Count(4);

    f.Tag("INFO").Size(29).Reserved(16).Text("info\xFF").Count(0);
}

void AddPath(Fields& f) {
    f.Tag("BEZR").Size(160).Reserved(16).Count(2);
    f.Floats({1, 2, 3, 4, 5, 6, 7, 8, 9, -0.5f}).Flag(true).Flag(false).Flag(false).Reserved(17);
    f.Floats({-1, -2, -3, -4, -5, -6, -7, -8, -9, 0.25f}).Flag(false).Flag(false).Flag(true).Reserved(17);
    f.Reserved(16).Count(0);

    // One segment of each kind, and one of an unknown kind.
    f.Tag("SEGM").Size(499).Count(6).Flag(true).Reserved(16);
    f.Int(0).Flag(true).Colors({0x010101, 0x020202, 0x030303}).Flag(false).Reserved(15).Size(0);
    f.Int(1).Flag(false).Colors({0x112233, 0x445566, 0x778899}).Flag(true).Reserved(15).Size(126);
    f.Floats({1, 2, 3, 4}).Byte(1).Byte(2).Flag(true).Byte(3).Floats({5}).Reserved(4);
    f.Flag(false).Floats({9}).Reserved(4).Floats({10, 11}).Reserved(4);
    f.Flag(true).Floats({6, 7, 8}).Reserved(64);
    f.Int(2).Flag(false).Colors({0, 0, 0}).Flag(false).Reserved(15).Size(36);
    f.Reserved(3).Byte(1).Floats({1, 2, 3}).Reserved(4).Flag(true).Flag(false).Reserved(14);
    f.Int(3).Flag(false).Colors({0, 0, 0}).Flag(true).Reserved(15).Size(28);
    f.Floats({1, 2, 3}).Reserved(3).Byte(0x80).Flag(false).Flag(true).Reserved(10);
    f.Int(4).Flag(false).Colors({0, 0, 0}).Flag(false).Reserved(15).Size(50);
    f.Floats({1, 2, 3}).Reserved(4).Floats({7}).Flag(true).Flag(false).Floats({4, 5, 6});
    f.Flag(true).Flag(false).Flag(false).Reserved(13);
    f.Int(-9).Flag(true).Colors({0xFFFFFF, 0xFEFDFC, 0x808080}).Flag(true).Reserved(15);
    f.Reserved(16).Count(0);
}

void AddStructures(Fields& f) {
    f.Tag("SUPP").Size(566).Reserved(32).Count(5);

    f.Tag("FUND").Size(132).Reserved(16).Count(1);
    f.Flag(true).Floats({1}).Flag(false).Floats({2}).Reserved(6).Floats({3, 4, 5}).Reserved(64);
    f.Reserved(16).Count(0);

    f.Tag("RASC").Size(96).Reserved(16).Count(2).Count(0).Count(2);
    f.Int(7).Floats({1}).Reserved(16).Int(-1).Floats({2}).Reserved(16);
    f.Reserved(16).Count(0);

    f.Tag("FREN").Size(68).Reserved(16).Count(1).Floats({1, 2, 3}).Reserved(16).Reserved(16).Count(0);

    f.Tag("TUBE").Size(88).Reserved(16).Count(1);
    f.Ints({1, 3, 2}).Reserved(4).Ints({4, 6, 5}).Reserved(4).Ints({7, 8}).Floats({9}).Reserved(4);
    f.Reserved(16).Count(0);

    f.Tag("CATW").Size(106).Reserved(16).Count(2);
    f.Ints({1, 2, 3, 4, 5, 6}).Count(0);
    f.Ints({11, 12, 13, 14, 15, 16}).Count(10).Reserved(10);
    f.Reserved(16).Count(0);
}

void AddScenery(Fields& f) {
    f.Tag("SCEN").Size(339).Reserved(16).Count(1);
    f.Floats({1, 2, 3}).Int(5).Floats({4}).Reserved(44);
    f.Reserved(16).Count(1);

    f.Tag("SCOB").Size(227).Reserved(16).Count(2);
    f.StrictText("tree").StrictText("oak.3ds");
    f.Floats({1, 2, 3, 10}).Floats({4, 5, 6, 11}).Floats({7, 8, 9, 12}).Floats({0.5f, 0.25f, 0.125f});
    f.Reserved(20);
    f.StrictText("").StrictText("").Floats({0, 0, 0, 0}).Floats({0, 0, 0, 0}).Floats({0, 0, 0, 0});
    f.Floats({0, 0, 0}).Reserved(20);
    f.Reserved(16).Count(0);

    f.Tag("TERA").Size(114).Count(2).Count(3).Floats({1, 2}).StrictText("grass").Floats({3}).StrictText("");
    f.Floats({4}).Flag(true).Reserved(4).StrictText("rock").Floats({5}).Byte(1).Reserved(15);
    f.Floats({0.1f, 0.2f, 0.3f, 0.4f, 0.5f, 0.6f}).Reserved(16).Count(0);

    f.Tag("ENVC").Size(47).Reserved(16).Text("sky").Text("").Reserved(16).Count(0);
}

}  // namespace

Bytes KnownTrack::InOrder(const std::vector<std::string>& tags) const {
    Bytes file;
    for (const std::string& tag : tags)
        for (std::size_t i = 0; i < chunks.size(); ++i) {
            const auto start = bytes.begin() + static_cast<std::ptrdiff_t>(chunks[i]);
            const std::size_t end = i + 1 < chunks.size() ? chunks[i + 1] : bytes.size();
            if (std::string(start, start + 4) == tag)
                file.insert(file.end(), start, bytes.begin() + static_cast<std::ptrdiff_t>(end));
        }
    return file;
}

KnownTrack MakeKnownTrack(const KnownTrackStyle& style) {
    Fields fields(style);
    AddHeader(fields);
    AddPath(fields);
    AddStructures(fields);
    AddScenery(fields);
    return fields.Take();
}

}  // namespace boreforge
