#include "platform/files/encoding_table.h"

#include <algorithm>
#include <iterator>

namespace files {

namespace {

// Where browsers read a name as its vendor's superset (Shift_JIS, GB2312, EUC-KR), so does this table: files
// under those names use the superset, and the backslash stays a backslash.
constexpr EncodingEntry table[] = {
    {"UTF-8", Codec::Utf8, nullptr, "UNICODE11UTF8"},
    {"UTF-16", Codec::Utf16, nullptr, "ISO10646UCS2 UCS2 CSUTF16 CSUNICODE"},
    {"UTF-16LE", Codec::Utf16LE, nullptr, "UCS2LE CSUTF16LE"},
    {"UTF-16BE", Codec::Utf16BE, nullptr, "UCS2BE CSUTF16BE"},
    {"UTF-32", Codec::Utf32, nullptr, "ISO10646UCS4 UCS4 CSUTF32 CSUCS4"},
    {"UTF-32LE", Codec::Utf32LE, nullptr, "UCS4LE CSUTF32LE"},
    {"UTF-32BE", Codec::Utf32BE, nullptr, "UCS4BE CSUTF32BE"},
    {"US-ASCII", Codec::Ascii, nullptr, "ASCII ISO646US ANSIX341968 ISOIR6 IBM367 CP367 CSASCII 646 US"},
    {"ISO-8859-1", Codec::Latin1, nullptr, "LATIN1 L1 ISO885911987 ISOIR100 IBM819 CP819 CSISOLATIN1 88591"},
    {"ISO-8859-2", Codec::System, "ISO-8859-2", "LATIN2 L2 ISO885921987 ISOIR101 CSISOLATIN2"},
    {"ISO-8859-3", Codec::System, "ISO-8859-3", "LATIN3 L3 ISO885931988 ISOIR109 CSISOLATIN3"},
    {"ISO-8859-4", Codec::System, "ISO-8859-4", "LATIN4 L4 ISO885941988 ISOIR110 CSISOLATIN4"},
    {"ISO-8859-5", Codec::System, "ISO-8859-5", "CYRILLIC ISO885951988 ISOIR144 CSISOLATINCYRILLIC"},
    {"ISO-8859-6", Codec::System, "ISO-8859-6",
     "ARABIC ISO885961987 ISO88596I ISO88596E ISOIR127 ECMA114 ASMO708 CSISOLATINARABIC"},
    {"ISO-8859-7", Codec::System, "ISO-8859-7",
     "GREEK GREEK8 ISO885971987 ISOIR126 ELOT928 ECMA118 CSISOLATINGREEK"},
    {"ISO-8859-8", Codec::System, "ISO-8859-8",
     "HEBREW ISO885981988 ISO88598I ISO88598E ISOIR138 CSISOLATINHEBREW"},
    {"ISO-8859-9", Codec::System, "ISO-8859-9", "LATIN5 L5 ISO885991989 ISOIR148 CSISOLATIN5"},
    {"ISO-8859-10", Codec::System, "ISO-8859-10", "LATIN6 L6 ISO8859101992 ISOIR157 CSISOLATIN6"},
    {"ISO-8859-11", Codec::System, "ISO-8859-11", "ISO8859112001"},
    {"ISO-8859-13", Codec::System, "ISO-8859-13", "LATIN7 L7 CSISO885913"},
    {"ISO-8859-14", Codec::System, "ISO-8859-14", "LATIN8 L8 ISOCELTIC ISO8859141998 ISOIR199 CSISO885914"},
    {"ISO-8859-15", Codec::System, "ISO-8859-15", "LATIN9 LATIN0 CSISO885915"},
    {"ISO-8859-16", Codec::System, "ISO-8859-16", "LATIN10 L10 ISO8859162001 ISOIR226 CSISO885916"},
    {"TIS-620", Codec::System, "TIS-620", "CSTIS620 TIS62025291"},
    {"Windows-874", Codec::System, "CP874", "CP874 IBM874"},
    {"Windows-1250", Codec::System, "CP1250", "CP1250 XCP1250 CSWINDOWS1250"},
    {"Windows-1251", Codec::System, "CP1251", "CP1251 XCP1251 CSWINDOWS1251"},
    {"Windows-1252", Codec::Windows1252, nullptr, "CP1252 XCP1252 CSWINDOWS1252"},
    {"Windows-1253", Codec::System, "CP1253", "CP1253 XCP1253 CSWINDOWS1253"},
    {"Windows-1254", Codec::System, "CP1254", "CP1254 XCP1254 CSWINDOWS1254"},
    {"Windows-1255", Codec::System, "CP1255", "CP1255 XCP1255 CSWINDOWS1255"},
    {"Windows-1256", Codec::System, "CP1256", "CP1256 XCP1256 CSWINDOWS1256"},
    {"Windows-1257", Codec::System, "CP1257", "CP1257 XCP1257 CSWINDOWS1257"},
    {"Windows-1258", Codec::System, "CP1258", "CP1258 XCP1258 CSWINDOWS1258"},
    {"KOI8-R", Codec::System, "KOI8-R", "KOI8 KOI CSKOI8R"},
    {"KOI8-U", Codec::System, "KOI8-U", "KOI8RU CSKOI8U"},
    {"macintosh", Codec::System, "MACINTOSH", "MAC MACROMAN XMACROMAN CSMACINTOSH"},
    {"Shift_JIS", Codec::System, "CP932",
     "SJIS XSJIS MSKANJI WINDOWS31J CP932 MS932 CSSHIFTJIS CSWINDOWS31J"},
    {"EUC-JP", Codec::System, "EUC-JP", "XEUCJP EUCJP CSEUCPKDFMTJAPANESE"},
    {"ISO-2022-JP", Codec::System, "ISO-2022-JP", "CSISO2022JP"},
    {"GB2312", Codec::System, "GBK", "EUCCN CSGB2312 XGBK GB231280"},
    {"GBK", Codec::System, "GBK", "CP936 MS936 WINDOWS936 CSGBK"},
    {"GB18030", Codec::System, "GB18030", "CSGB18030"},
    {"Big5", Codec::System, "BIG5", "CNBIG5 XXBIG5 CP950 BIG5TW CSBIG5"},
    {"Big5-HKSCS", Codec::System, "BIG5-HKSCS", "CSBIG5HKSCS"},
    {"EUC-TW", Codec::System, "EUC-TW", "XEUCTW"},
    {"EUC-KR", Codec::System, "CP949", "KSC56011987 KSC5601 WINDOWS949 CP949 UHC KOREAN CSEUCKR"},
    {"ISO-2022-KR", Codec::System, "ISO-2022-KR", "CSISO2022KR"},
    {"IBM437", Codec::System, "IBM437", "CP437 437 CSPC8CODEPAGE437"},
    {"IBM737", Codec::System, "CP737", "CP737"},
    {"IBM775", Codec::System, "CP775", "CP775 CSPC775BALTIC"},
    {"IBM850", Codec::System, "IBM850", "CP850 850 CSPC850MULTILINGUAL"},
    {"IBM852", Codec::System, "IBM852", "CP852 852 CSPCP852"},
    {"IBM855", Codec::System, "IBM855", "CP855 855 CSIBM855"},
    {"IBM857", Codec::System, "IBM857", "CP857 857 CSIBM857"},
    {"IBM00858", Codec::System, "CP858", "IBM858 CP858 CP00858 CCSID00858"},
    {"IBM860", Codec::System, "IBM860", "CP860 860 CSIBM860"},
    {"IBM861", Codec::System, "IBM861", "CP861 861 CPIS CSIBM861"},
    {"IBM862", Codec::System, "IBM862", "CP862 862 CSPC862LATINHEBREW"},
    {"IBM863", Codec::System, "IBM863", "CP863 863 CSIBM863"},
    {"IBM865", Codec::System, "IBM865", "CP865 865 CSIBM865"},
    {"IBM866", Codec::System, "IBM866", "CP866 866 CSIBM866"},
};

// Upper case, letters and digits only: "iso_8859-1:1987" and "ISO-8859-1:1987" are one name.
QByteArray bareName(QByteArrayView name)
{
    QByteArray bare;
    for (char c : name) {
        if (c >= 'a' && c <= 'z')
            bare += char(c - 'a' + 'A');
        else if ((c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'))
            bare += c;
    }
    return bare;
}

bool listHolds(QByteArrayView list, QByteArrayView word)
{
    qsizetype from = 0;
    while (from < list.size()) {
        qsizetype end = list.indexOf(' ', from);
        if (end < 0)
            end = list.size();
        if (list.sliced(from, end - from) == word)
            return true;
        from = end + 1;
    }
    return false;
}

} // namespace

std::span<const EncodingEntry> encodingTable() { return table; }

const EncodingEntry *findEncoding(QByteArrayView name)
{
    const QByteArray bare = bareName(name);
    if (bare.isEmpty())
        return nullptr;
    const auto *found = std::find_if(std::begin(table), std::end(table), [&](const EncodingEntry &entry) {
        return bareName(entry.name) == bare || listHolds(entry.aliases, bare);
    });
    return found == std::end(table) ? nullptr : found;
}

const EncodingEntry &entryOf(Codec codec)
{
    return *std::find_if(std::begin(table), std::end(table),
                         [codec](const EncodingEntry &entry) { return entry.codec == codec; });
}

bool standsFor(const EncodingEntry &named, const EncodingEntry &actual)
{
    return &named == &actual || (named.codec == Codec::Utf16 && isUtf16(actual.codec))
        || (named.codec == Codec::Utf32 && isUtf32(actual.codec));
}

bool isUtf16(Codec codec)
{
    return codec == Codec::Utf16 || codec == Codec::Utf16LE || codec == Codec::Utf16BE;
}

bool isUtf32(Codec codec)
{
    return codec == Codec::Utf32 || codec == Codec::Utf32LE || codec == Codec::Utf32BE;
}

} // namespace files
