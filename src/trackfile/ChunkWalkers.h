// The three ways to walk a list of fields. A function named Fields lists the fields of a record or a chunk in
// file order: a FieldReader fills them, a FieldWriter writes them and a FieldMeasurer counts their bytes, so
// the three can't disagree.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <iterator>
#include <string>
#include <vector>

#include "trackfile/TrackBytes.h"
#include "trackfile/TrackDocument.h"

namespace boreforge {

// Format version 1.3, which every save writes.
inline constexpr std::array<std::uint8_t, 4> kWrittenVersion{1, 3, 0, 0};

// The shortest record of this type: it bounds how many fit into the rest of a file. Specialised for types
// where that isn't a default-constructed record.
template <class Record>
Record SmallestRecord() {
    return {};
}

class FieldMeasurer {
  public:
    template <class Record>
    using Access = const Record;

    std::int64_t length = 0;

    void U8(std::uint8_t) { length += 1; }
    void Flag(Truth) { length += 1; }
    void I32(std::int32_t) { length += 4; }
    void F32(float) { length += 4; }
    void Color(PackedColor) { length += 4; }
    void Text(const std::string& text) { length += 4 + std::ssize(text); }
    void StrictText(const std::string& text) { Text(text); }
    void Reserved(std::int32_t bytes) { length += std::max(bytes, 0); }
    void Version(const std::array<std::uint8_t, 4>&) { length += 4; }
    void Extent(std::int32_t) { length += 4; }
    void Count(const auto&) { length += 4; }
    void Grid(const std::vector<float>& values, std::int32_t, std::int32_t) {
        length += 4 * std::ssize(values);
    }
    void Block(const auto& content) {
        length += 4;
        content(*this);
    }
};

class FieldReader {
  public:
    template <class Record>
    using Access = Record;

    explicit FieldReader(ReadCursor& at) : at_(at) {}

    void U8(std::uint8_t& value) { value = ReadU8(at_); }
    void Flag(Truth& value) { value = ToTruth(ReadU8(at_) != 0); }
    void I32(std::int32_t& value) { value = ReadI32(at_); }
    void F32(float& value) { value = ReadF32(at_); }
    void Color(PackedColor& value) { value = ReadColor(at_); }

    // A length, then the text. A length of 0 or less means an empty text.
    void Text(std::string& text) { text = ReadText(at_, std::max(ReadI32(at_), 0)); }
    // The same, but a negative length fails.
    void StrictText(std::string& text) { text = ReadText(at_, ReadI32(at_)); }

    void Reserved(std::int32_t bytes) { SkipBytes(at_, bytes); }
    void Version(std::array<std::uint8_t, 4>& bytes) {
        for (std::uint8_t& byte : bytes)
            byte = ReadU8(at_);
    }
    // The width or depth of a grid. A negative one fails.
    void Extent(std::int32_t& value) {
        value = ReadI32(at_);
        if (value < 0) at_.Fail();
    }

    // The number of records in a list, which gets that size. A number too large for the rest of the file
    // fails before any memory is allocated.
    template <class List>
    void Count(List& list) {
        FieldMeasurer smallest;
        Fields(smallest, SmallestRecord<typename List::value_type>());
        const std::int64_t count = ReadI32(at_);
        if (count < 0 || count * smallest.length > at_.Remaining()) at_.Fail();
        list.clear();
        if (!at_.failed) list.resize(count);
    }

    // `depth` rows of `width` values.
    void Grid(std::vector<float>& values, std::int32_t width, std::int32_t depth) {
        values.clear();
        if (at_.failed || width == 0 || depth == 0) return;
        if (width > at_.Remaining() / 4 / depth) return at_.Fail();
        values.resize(std::int64_t{width} * depth);
        const std::uint8_t* bytes = at_.Take(4 * std::ssize(values));
        for (float& value : values) {
            value = std::bit_cast<float>(BigEndianAt(bytes));
            bytes += 4;
        }
    }

    // A length in bytes, then the fields. The length is ignored: the fields themselves determine where they
    // end.
    void Block(const auto& content) {
        SkipBytes(at_, 4);
        content(*this);
    }

  private:
    ReadCursor& at_;
};

class FieldWriter {
  public:
    template <class Record>
    using Access = const Record;

    explicit FieldWriter(WriteCursor& at) : at_(at) {}

    void U8(std::uint8_t value) { WriteU8(at_, value); }
    // The low byte: true becomes 0xFF.
    void Flag(Truth value) { WriteU8(at_, static_cast<std::uint8_t>(value)); }
    void I32(std::int32_t value) { WriteI32(at_, value); }
    void F32(float value) { WriteF32(at_, value); }
    void Color(PackedColor value) { WriteColor(at_, value); }
    void Text(const std::string& text) {
        WriteI32(at_, static_cast<std::int32_t>(text.size()));
        WriteText(at_, text);
    }
    void StrictText(const std::string& text) { Text(text); }
    void Reserved(std::int32_t bytes) { WriteZeros(at_, bytes); }
    // Always kWrittenVersion, not the version that was read.
    void Version(const std::array<std::uint8_t, 4>&) {
        for (const std::uint8_t byte : kWrittenVersion)
            WriteU8(at_, byte);
    }
    void Extent(std::int32_t value) { WriteI32(at_, value); }
    void Count(const auto& list) { WriteI32(at_, CountOf(list)); }
    void Grid(const std::vector<float>& values, std::int32_t, std::int32_t) {
        std::uint8_t* bytes = at_.Take(4 * std::ssize(values));
        if (!bytes) return;
        for (const float value : values) {
            PutBitsAt(bytes, std::bit_cast<std::uint32_t>(value));
            bytes += 4;
        }
    }
    void Block(const auto& content) {
        FieldMeasurer measurer;
        content(measurer);
        WriteI32(at_, static_cast<std::int32_t>(measurer.length));
        content(*this);
    }

  private:
    WriteCursor& at_;
};

// Walks the records of a list. Its Count, which sets its size, must come earlier.
template <class Walk, class List>
void Records(Walk& walk, List& list) {
    for (auto& record : list)
        Fields(walk, record);
}

// The record for a walk that fills it, a const record for the other two.
template <class Walk, class Record>
using RecordFor = typename Walk::template Access<Record>;

}  // namespace boreforge
