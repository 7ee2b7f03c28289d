// What nobody should type: signs that mean something to a statement, a pattern, a path, a page or a sheet;
// characters that are none; numbers and dates at each limit; texts without end.
#pragma once

#include <string>
#include <vector>

namespace veldona::faults {

inline std::vector<std::string> hostileTexts() {
    using namespace std::string_literals;
    std::vector<std::string> texts = {
        "'", "\"", "''", "x' OR '1'='1", "';DROP TABLE MUSTKAYIT;--", "5 OR 1=1", "5 OR 5=5",
        "5 OR ISLEMNO>0", "5 OR TRUE", "7 OR ''=''", "0 OR 1", "5) OR (1=1",
        "7'; DELETE FROM TAKSITODENEN WHERE '1'='1", "|", "*", "%", "_", "#", "##", "#1/1/2026#", "[", "]",
        "[AD]", "(((", ")", "?", "\\", "&", "--", "/*", ";", "..\\..\\..\\x", "/x/y", "NULL", "{AD} %p",
        "<b>&amp;\"'</b>", "=1+1", "1|2|3", "a\nb\r\nc\td", "\x01\x02\x1b[31m\x7f", "a\0b"s,
        "\xC3\x28\xFF\xED\xA0\x80",
        ("\xE2\x80\xAE\xE2\x80\x8F"
         "abc"),
        "\xF0\x9F\x98\x80", "\xEF\xBF\xBE\xEF\xBF\xBF", "e\xCC\x81\xCC\x81\xE2\x80\x8B", "İIıiŞşĞğ", "   ",
        // the numbers at each limit, with the signs of both countries
        "0", "-0", "-1", "255", "256", "255,5", "32767", "32768", "-32769", "2147483647", "2147483648",
        "-2147483649", "99999999999999999999", "922337203685477,5807", "922337203685477,5808",
        "-922.337.203.685.477,5808", "0,00005", "1.234.567,89", "1,234,567.89", "1,5-",
        "1.7976931348623157E+308", "1E+16", "1e5", "1e400", "&H7FFFFFFF", "NaN",
        // and the dates
        "31/12/9999", "01/01/0100", "30/12/1899", "29/02/2100", "29/02/2000", "00/00/0000", "32/13/2026",
        "1/1/1", "12.31.26", "2026-11-22 25:61:61"};
    texts.push_back(std::string(65536, 'x'));
    std::string quotes;
    for (int i = 0; i < 16384; ++i)
        quotes += "'ş%";
    texts.push_back(quotes);
    return texts;
}

} // namespace veldona::faults
