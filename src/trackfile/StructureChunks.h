// SUPP and its five children FUND, RASC, FREN, TUBE and CATW: carried through.
#pragma once

#include "trackfile/ChunkLayout.h"

namespace boreforge {

template <class Walk>
void Fields(Walk& walk, RecordFor<Walk, TrackFundRecord>& fund) {
    walk.Flag(fund.FundFlag1);
    walk.F32(fund.FundFloat1);
    walk.Flag(fund.FundFlag2);
    walk.F32(fund.FundFloat2);
    walk.Reserved(6);
    PointFields(walk, fund.FundPoint);
    walk.Reserved(64);
}

template <class Walk>
void Fields(Walk& walk, RecordFor<Walk, TrackRascEntry>& entry) {
    walk.I32(entry.EntryValue);
    walk.F32(entry.EntryFloat);
    walk.Reserved(16);
}

template <class Walk>
void Fields(Walk& walk, RecordFor<Walk, TrackRascRecord>& rasc) {
    walk.Count(rasc.Entries);
    Records(walk, rasc.Entries);
}

template <class Walk>
void Fields(Walk& walk, RecordFor<Walk, TrackFrenRecord>& fren) {
    PointFields(walk, fren.FrenPoint);
    walk.Reserved(16);
}

// Values 2 and 3, and 5 and 6, are in the opposite order in the file.
template <class Walk>
void Fields(Walk& walk, RecordFor<Walk, TrackTubeRecord>& tube) {
    walk.I32(tube.TubeValue1);
    walk.I32(tube.TubeValue3);
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
void Fields(Walk& walk, RecordFor<Walk, TrackCatwRecord>& catw) {
    walk.I32(catw.CatwValue1);
    walk.I32(catw.CatwValue2);
    walk.I32(catw.CatwValue3);
    walk.I32(catw.CatwValue4);
    walk.I32(catw.CatwValue5);
    walk.I32(catw.CatwValue6);
    walk.I32(catw.CatwTailLength);
    walk.Reserved(catw.CatwTailLength);
}

struct SuppLayout : ChunkLayout<"SUPP", &TrackDocument::SuppSize, &TrackDocument::SuppChildren> {
    template <class Walk>
    static void Fields(Walk& walk, RecordFor<Walk, TrackDocument>&) {
        walk.Reserved(32);
    }
};
inline constexpr auto ReadSuppChunk = ReadChunk<SuppLayout>;
inline constexpr auto WriteSuppChunk = WriteChunk<SuppLayout>;

using FundLayout =
    ListLayout<"FUND", &TrackDocument::FundSize, &TrackDocument::FundChildren, &TrackDocument::FundRecords>;
inline constexpr auto ReadFundChunk = ReadChunk<FundLayout>;
inline constexpr auto WriteFundChunk = WriteChunk<FundLayout>;

using RascLayout =
    ListLayout<"RASC", &TrackDocument::RascSize, &TrackDocument::RascChildren, &TrackDocument::RascRecords>;
inline constexpr auto ReadRascChunk = ReadChunk<RascLayout>;
inline constexpr auto WriteRascChunk = WriteChunk<RascLayout>;

using FrenLayout =
    ListLayout<"FREN", &TrackDocument::FrenSize, &TrackDocument::FrenChildren, &TrackDocument::FrenRecords>;
inline constexpr auto ReadFrenChunk = ReadChunk<FrenLayout>;
inline constexpr auto WriteFrenChunk = WriteChunk<FrenLayout>;

using TubeLayout =
    ListLayout<"TUBE", &TrackDocument::TubeSize, &TrackDocument::TubeChildren, &TrackDocument::TubeRecords>;
inline constexpr auto ReadTubeChunk = ReadChunk<TubeLayout>;
inline constexpr auto WriteTubeChunk = WriteChunk<TubeLayout>;

using CatwLayout =
    ListLayout<"CATW", &TrackDocument::CatwSize, &TrackDocument::CatwChildren, &TrackDocument::CatwRecords>;
inline constexpr auto ReadCatwChunk = ReadChunk<CatwLayout>;
inline constexpr auto WriteCatwChunk = WriteChunk<CatwLayout>;

}  // namespace boreforge
