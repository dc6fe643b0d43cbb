// SUPP and its five children FUND, RASC, FREN, TUBE and CATW: carried through.
#include "trackfile/ChunkFrame.h"
#include "trackfile/TrackChunks.h"

namespace boreforge {

template <class Walk>
void Fields(Walk& walk, In<Walk, TrackFundRecord>& fund) {
    walk.Flag(fund.FundFlag1);
    walk.F32(fund.FundFloat1);
    walk.Flag(fund.FundFlag2);
    walk.F32(fund.FundFloat2);
    walk.Reserved(6);
    PointFields(walk, fund.FundPoint);
    walk.Reserved(64);
}

template <class Walk>
void Fields(Walk& walk, In<Walk, TrackRascEntry>& entry) {
    walk.I32(entry.EntryValue);
    walk.F32(entry.EntryFloat);
    walk.Reserved(16);
}

template <class Walk>
void Fields(Walk& walk, In<Walk, TrackRascRecord>& rasc) {
    walk.Count(rasc.Entries);
    walk.Records(rasc.Entries);
}

template <class Walk>
void Fields(Walk& walk, In<Walk, TrackFrenRecord>& fren) {
    PointFields(walk, fren.FrenPoint);
    walk.Reserved(16);
}

template <class Walk>
void Fields(Walk& walk, In<Walk, TrackTubeRecord>& tube) {
    walk.I32(tube.TubeValue1);
    walk.I32(
        tube.TubeValue3);  // the second and the third stand exchanged in the file, the fifth and sixth too
    walk.I32(tube.TubeValue2);
    walk.Reserved(4);
    walk.I32(tube.TubeValue4);
    walk.I32(tube.TubeValue6);
    walk.I32(tube.TubeValue5);
    walk.Reserved(4);
    walk.I32(tube.TubeValue7);
    walk.I32(tube.TubeValue8);
    walk.F32(tube.TubeFloat);
    walk.Reserved(4);
}

template <class Walk>
void Fields(Walk& walk, In<Walk, TrackCatwRecord>& catw) {
    walk.I32(catw.CatwValue1);
    walk.I32(catw.CatwValue2);
    walk.I32(catw.CatwValue3);
    walk.I32(catw.CatwValue4);
    walk.I32(catw.CatwValue5);
    walk.I32(catw.CatwValue6);
    walk.I32(catw.CatwTailLength);
    walk.Tail(catw.CatwTailLength);
}

namespace {

struct SuppLayout {
    static constexpr char Tag[] = "SUPP";
    static constexpr auto Size = &TrackDocument::SuppSize;
    static constexpr auto Children = &TrackDocument::SuppChildren;
    template <class Walk>
    static void Fields(Walk& walk, In<Walk, TrackDocument>&) {
        walk.Reserved(32);
    }
};

struct FundLayout : ListFields<&TrackDocument::FundRecords> {
    static constexpr char Tag[] = "FUND";
    static constexpr auto Size = &TrackDocument::FundSize;
    static constexpr auto Children = &TrackDocument::FundChildren;
};

struct RascLayout : ListFields<&TrackDocument::RascRecords> {
    static constexpr char Tag[] = "RASC";
    static constexpr auto Size = &TrackDocument::RascSize;
    static constexpr auto Children = &TrackDocument::RascChildren;
};

struct FrenLayout : ListFields<&TrackDocument::FrenRecords> {
    static constexpr char Tag[] = "FREN";
    static constexpr auto Size = &TrackDocument::FrenSize;
    static constexpr auto Children = &TrackDocument::FrenChildren;
};

struct TubeLayout : ListFields<&TrackDocument::TubeRecords> {
    static constexpr char Tag[] = "TUBE";
    static constexpr auto Size = &TrackDocument::TubeSize;
    static constexpr auto Children = &TrackDocument::TubeChildren;
};

struct CatwLayout : ListFields<&TrackDocument::CatwRecords> {
    static constexpr char Tag[] = "CATW";
    static constexpr auto Size = &TrackDocument::CatwSize;
    static constexpr auto Children = &TrackDocument::CatwChildren;
};

}  // namespace

void ReadSuppChunk(ReadCursor& at, TrackDocument& track) { ReadChunk<SuppLayout>(at, track); }
void WriteSuppChunk(Bytes& bytes, const TrackDocument& track) { WriteChunk<SuppLayout>(bytes, track); }
std::int64_t CountSuppChunk(const TrackDocument& track) { return CountChunk<SuppLayout>(track); }

void ReadFundChunk(ReadCursor& at, TrackDocument& track) { ReadChunk<FundLayout>(at, track); }
void WriteFundChunk(Bytes& bytes, const TrackDocument& track) { WriteChunk<FundLayout>(bytes, track); }
std::int64_t CountFundChunk(const TrackDocument& track) { return CountChunk<FundLayout>(track); }

void ReadRascChunk(ReadCursor& at, TrackDocument& track) { ReadChunk<RascLayout>(at, track); }
void WriteRascChunk(Bytes& bytes, const TrackDocument& track) { WriteChunk<RascLayout>(bytes, track); }
std::int64_t CountRascChunk(const TrackDocument& track) { return CountChunk<RascLayout>(track); }

void ReadFrenChunk(ReadCursor& at, TrackDocument& track) { ReadChunk<FrenLayout>(at, track); }
void WriteFrenChunk(Bytes& bytes, const TrackDocument& track) { WriteChunk<FrenLayout>(bytes, track); }
std::int64_t CountFrenChunk(const TrackDocument& track) { return CountChunk<FrenLayout>(track); }

void ReadTubeChunk(ReadCursor& at, TrackDocument& track) { ReadChunk<TubeLayout>(at, track); }
void WriteTubeChunk(Bytes& bytes, const TrackDocument& track) { WriteChunk<TubeLayout>(bytes, track); }
std::int64_t CountTubeChunk(const TrackDocument& track) { return CountChunk<TubeLayout>(track); }

void ReadCatwChunk(ReadCursor& at, TrackDocument& track) { ReadChunk<CatwLayout>(at, track); }
void WriteCatwChunk(Bytes& bytes, const TrackDocument& track) { WriteChunk<CatwLayout>(bytes, track); }
std::int64_t CountCatwChunk(const TrackDocument& track) { return CountChunk<CatwLayout>(track); }

}  // namespace boreforge
