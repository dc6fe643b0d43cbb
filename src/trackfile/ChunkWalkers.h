// The three ways to walk a chunk's layout. A layout is written down once, as a function that names its fields
// in file order; a FieldReader fills them, a FieldWriter writes them and a FieldCounter counts their bytes,
// so that the three can't disagree.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <memory_resource>
#include <string>
#include <vector>

#include "platform/Bytes.h"
#include "trackfile/TrackBytes.h"

namespace boreforge {

// Format version 1.3, which every save puts into the file.
inline constexpr std::array<std::uint8_t, 4> kWrittenVersion{1, 3, 0, 0};

// A record whose layout takes the fewest bytes that any record of its type can take. A type of which a fresh
// record isn't the smallest gives its own.
template <class Record>
Record SmallestRecord() {
    return {};
}

class FieldCounter {
  public:
    template <class Record>
    using Access = const Record;

    std::int64_t count = 0;

    void U8(std::uint8_t) { count += 1; }
    void Flag(Truth) { count += 1; }
    void I32(std::int32_t) { count += 4; }
    void F32(float) { count += 4; }
    void Color(PackedColor) { count += 4; }
    void Text(const std::string& text) { count += 4 + static_cast<std::int64_t>(text.size()); }
    void StrictText(const std::string& text) { Text(text); }
    void Reserved(std::int32_t bytes) { count += bytes; }
    void Tail(std::int32_t bytes) { count += bytes > 0 ? bytes : 0; }
    void Version(const std::array<std::uint8_t, 4>&) { count += 4; }
    template <class List>
    void Count(const List&) {
        count += 4;
    }
    template <class List>
    void Records(const List& records) {
        for (const auto& record : records)
            Fields(*this, record);
    }
    void Grid(const std::pmr::vector<float>& values, std::int32_t, std::int32_t) {
        count += 4 * static_cast<std::int64_t>(values.size());
    }
    template <class Content>
    void Block(const Content& content) {
        count += 4;
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

    // A text behind its length; a length of 0 or below means the empty text.
    void Text(std::string& text) {
        const std::int32_t length = ReadI32(at_);
        text = ReadText(at_, length > 0 ? length : 0);
    }
    // The same, but a negative length is a damaged file.
    void StrictText(std::string& text) { text = ReadText(at_, ReadI32(at_)); }

    void Reserved(std::int32_t bytes) { SkipBytes(at_, bytes); }
    void Tail(std::int32_t bytes) { SkipBytes(at_, bytes); }
    void Version(std::array<std::uint8_t, 4>& bytes) {
        for (std::uint8_t& byte : bytes)
            byte = ReadU8(at_);
    }

    // The number of records that stand further on. A number that the rest of the file can't hold fails here,
    // before any memory is asked for it.
    template <class List>
    void Count(List& records) {
        FieldCounter smallest;
        Fields(smallest, SmallestRecord<typename List::value_type>());
        const std::int64_t count = ReadI32(at_);
        if (count < 0 || count * smallest.count > static_cast<std::int64_t>(at_.Remaining())) at_.Fail();
        announced_ = at_.failed ? 0 : static_cast<std::size_t>(count);
        records.clear();
        records.reserve(announced_);
    }
    // The records of the last Count.
    template <class List>
    void Records(List& records) {
        for (std::size_t left = announced_; left > 0; --left)
            Fields(*this, records.emplace_back());
    }

    // `depth` rows of `width` values.
    void Grid(std::pmr::vector<float>& values, std::int32_t width, std::int32_t depth) {
        const std::size_t room = at_.Remaining() / 4;
        values.clear();
        if (width < 0 || depth < 0) at_.Fail();
        if (at_.failed || width == 0 || depth == 0) return;
        if (static_cast<std::size_t>(width) > room / static_cast<std::size_t>(depth)) return at_.Fail();
        values.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(depth));
        const std::uint8_t* place = at_.Take(4 * values.size());
        for (float& value : values) {
            value = std::bit_cast<float>(BitsAt(place));
            place += 4;
        }
    }

    // Fields behind their own length in bytes. The length is not used: the fields alone say where they end.
    template <class Content>
    void Block(const Content& content) {
        SkipBytes(at_, 4);
        content(*this);
    }

  private:
    ReadCursor& at_;
    std::size_t announced_ = 0;
};

class FieldWriter {
  public:
    template <class Record>
    using Access = const Record;

    explicit FieldWriter(Bytes& bytes) : bytes_(bytes) {}

    void U8(std::uint8_t value) { WriteU8(bytes_, value); }
    // The low byte of the 16 bits goes out, so that true becomes 0xFF.
    void Flag(Truth value) { WriteU8(bytes_, static_cast<std::uint8_t>(value)); }
    void I32(std::int32_t value) { WriteI32(bytes_, value); }
    void F32(float value) { WriteF32(bytes_, value); }
    void Color(PackedColor value) { WriteColor(bytes_, value); }
    void Text(const std::string& text) {
        WriteI32(bytes_, static_cast<std::int32_t>(text.size()));
        WriteText(bytes_, text);
    }
    void StrictText(const std::string& text) { Text(text); }
    void Reserved(std::int32_t bytes) { WriteZeros(bytes_, bytes); }
    void Tail(std::int32_t bytes) { WriteZeros(bytes_, bytes); }
    // Whatever version the file had that was read.
    void Version(const std::array<std::uint8_t, 4>&) {
        for (const std::uint8_t byte : kWrittenVersion)
            WriteU8(bytes_, byte);
    }
    template <class List>
    void Count(const List& records) {
        WriteI32(bytes_, static_cast<std::int32_t>(records.size()));
    }
    template <class List>
    void Records(const List& records) {
        for (const auto& record : records)
            Fields(*this, record);
    }
    void Grid(const std::pmr::vector<float>& values, std::int32_t, std::int32_t) {
        std::uint8_t* place = Append(bytes_, 4 * values.size());
        for (const float value : values) {
            PutBitsAt(place, std::bit_cast<std::uint32_t>(value));
            place += 4;
        }
    }
    template <class Content>
    void Block(const Content& content) {
        FieldCounter counter;
        content(counter);
        WriteI32(bytes_, static_cast<std::int32_t>(counter.count));
        content(*this);
    }

  private:
    Bytes& bytes_;
};

// The second argument of a layout: the record, or the record as a constant, as the walk needs it.
template <class Walk, class Record>
using In = typename Walk::template Access<Record>;

}  // namespace boreforge
