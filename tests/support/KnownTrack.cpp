#include <sstream>

#include "base/Values.h"
#include "support/CoreTest.h"

namespace boreforge {

static const std::vector<std::string> kKnownChunks = {
    "@ZPHR S000007AD V01030000 z16 N00000004",
    "@TRCK S00000581 00000011 N00000002 FFFFFFFE "
    "T z7 M00000003 'Red' C010203 C040506 C070809 C0A0B0C "
    "00 z7 M00000000 C111213 C141516 C171819 C1A1B1C "
    "C202122 C232425 C262728 C303132 C333435 C363738 C393A3B C3C3D3E z16 N00000004",
    "@INFO S0000001D z16 M00000005 'info' FF N00000000",
    "@BEZR S000000A0 z16 N00000002 "
    "3F800000 40000000 40400000 40800000 40A00000 40C00000 40E00000 41000000 41100000 BF000000 T 00 00 z17 "
    "BF800000 C0000000 C0400000 C0800000 C0A00000 C0C00000 C0E00000 C1000000 C1100000 3E800000 00 00 T z17 "
    "z16 N00000000",
    "@SEGM S000001F3 N00000006 T z16 "
    "00000000 T C010101 C020202 C030303 00 z15 S00000000 "
    "00000001 00 C112233 C445566 C778899 T z15 S0000007E "
    "3F800000 40000000 40400000 40800000 01 02 T 03 40A00000 z4 00 41100000 z4 41200000 41300000 z4 T "
    "40C00000 40E00000 41000000 z64 "
    "00000002 00 C000000 C000000 C000000 00 z15 S00000024 z3 01 3F800000 40000000 40400000 z4 T 00 z14 "
    "00000003 00 C000000 C000000 C000000 T z15 S0000001C 3F800000 40000000 40400000 z3 80 00 T z10 "
    "00000004 00 C000000 C000000 C000000 00 z15 S00000032 "
    "3F800000 40000000 40400000 z4 40E00000 T 00 40800000 40A00000 40C00000 T 00 00 z13 "
    "FFFFFFF7 T CFFFFFF CFEFDFC C808080 T z15 z16 N00000000",
    "@SUPP S00000236 z32 N00000005",
    "@FUND S00000084 z16 N00000001 "
    "T 3F800000 00 40000000 z6 40400000 40800000 40A00000 z64 z16 N00000000",
    "@RASC S00000060 z16 N00000002 "
    "N00000000 N00000002 00000007 3F800000 z16 FFFFFFFF 40000000 z16 z16 N00000000",
    "@FREN S00000044 z16 N00000001 3F800000 40000000 40400000 z16 z16 N00000000",
    "@TUBE S00000058 z16 N00000001 00000001 00000003 00000002 z4 00000004 00000006 00000005 z4 "
    "00000007 00000008 41100000 z4 z16 N00000000",
    "@CATW S0000006A z16 N00000002 "
    "00000001 00000002 00000003 00000004 00000005 00000006 N00000000 "
    "0000000B 0000000C 0000000D 0000000E 0000000F 00000010 N0000000A z10 z16 N00000000",
    "@SCEN S00000153 z16 N00000001 3F800000 40000000 40400000 00000005 40800000 z44 z16 N00000001",
    "@SCOB S000000E3 z16 N00000002 N00000004 'tree' N00000007 'oak.3ds' "
    "3F800000 40000000 40400000 41200000 40800000 40A00000 40C00000 41300000 "
    "40E00000 41000000 41100000 41400000 3F000000 3E800000 3E000000 z20 "
    "N00000000 N00000000 00000000 00000000 00000000 00000000 00000000 00000000 00000000 00000000 "
    "00000000 00000000 00000000 00000000 00000000 00000000 00000000 z20 z16 N00000000",
    "@TERA S00000072 N00000002 N00000003 3F800000 40000000 N00000005 'grass' 40400000 N00000000 40800000 "
    "T z4 N00000004 'rock' 40A00000 01 z15 "
    "3DCCCCCD 3E4CCCCD 3E99999A 3ECCCCCD 3F000000 3F19999A z16 N00000000",
    "@ENVC S0000002F z16 M00000003 'sky' M00000000 z16 N00000000",
};

Bytes Unfold(const std::string& notation, const Disguise& disguise) {
    std::string bytes;
    std::istringstream tokens(notation);
    for (std::string token; tokens >> token;) {
        const char kind = token[0];
        const std::string rest = token.substr(1);
        const auto worn = [&](const std::string& plain) {
            return disguise.contains(kind) ? disguise.at(kind) : plain;
        };
        std::string digits = token;
        if (kind == 'T') digits = worn("FF");
        if (kind == 'C' && rest.size() == 6) digits = worn("00") + rest;
        if (std::string("SNMV").find(kind) != std::string::npos) digits = worn(rest);
        if (kind == 'z') digits = worn("00");
        if (kind == '@') bytes += disguise.contains(kind) ? ToLowerAscii(rest) : rest;
        if (kind == '\'') bytes += rest.substr(0, rest.size() - 1);
        if (kind == '@' || kind == '\'') continue;
        for (int times = kind == 'z' ? std::stoi(rest) : 1; times > 0; --times)
            for (std::size_t i = 0; i < digits.size(); i += 2)
                bytes += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
    }
    return {bytes.begin(), bytes.end()};
}

Bytes KnownFile(const Disguise& disguise, const std::vector<std::size_t>& order) {
    std::string text;
    for (std::size_t i = 0; i < kKnownChunks.size(); ++i)
        text += kKnownChunks[order.empty() ? i : order.at(i)] + " ";
    return Unfold(text, disguise);
}

std::vector<std::size_t> MarkedFields(char letter) {
    const Bytes marked = KnownFile({{letter, "ABABABAB"}});  // bytes that the file has nowhere else
    std::vector<std::size_t> offsets;
    for (std::size_t i = 0; i < marked.size(); i += marked[i] == 0xAB ? 4 : 1)
        if (marked[i] == 0xAB) offsets.push_back(i);
    return offsets;
}

}  // namespace boreforge
