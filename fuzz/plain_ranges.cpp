#include "fuzz/plain_ranges.h"

#include <algorithm>
#include <cstdio>
#include <set>

namespace
{

Plain_Result refused(const std::string &line)
{
    return {false, {}, line + "\n"};
}

/* A lexeme: 'n' for a number, or the separator itself. */
struct Lexeme {
    char kind;
    int64_t value;
};

bool split(const std::string &text, std::vector<Lexeme> *lexemes)
{
    bool inNumber = false;
    for (const char c : text) {
        const bool isDigit = std::string("0123456789").find(c) != std::string::npos;
        if (isDigit && !inNumber) {
            lexemes->push_back({'n', 0});
        }
        if (isDigit) {
            lexemes->back().value =
                std::min<int64_t>(lexemes->back().value * 10 + (c - '0'), INT32_MAX);
        }
        inNumber = isDigit;
        if (c == ',' || c == '-') {
            lexemes->push_back({c, 0});
        } else if (!isDigit && c != ' ' && c != '\t') {
            return false;
        }
    }
    return true;
}

/* The line of the fault, or an empty text. */
std::string walk(const std::vector<Lexeme> &lexemes, int32_t min, int32_t max,
                 std::set<int32_t> *values)
{
    const auto kind = [&](size_t i) { return i < lexemes.size() ? lexemes[i].kind : '\0'; };
    const auto isOut = [&](size_t i) { return lexemes[i].value < min || lexemes[i].value > max; };
    const auto take = [&](size_t first, size_t last) {
        for (int64_t value = lexemes[first].value; value <= lexemes[last].value; value++) {
            values->insert(static_cast<int32_t>(value));
        }
    };
    size_t i = 0;
    while (i < lexemes.size()) {
        const bool isLast = i + 1 == lexemes.size();
        if (kind(i) != 'n') {
            if (kind(i) != ',' || i == 0 || isLast) {
                return "438: Parsing";
            }
            i++;
        } else if (isLast || kind(i + 1) == 'n') {
            if (isOut(i)) {
                return isLast ? "426: Range" : "354: Range";
            }
            take(i, i);
            i++;
        } else if (kind(i + 2) == '\0') {
            return "412: Parsing";
        } else if (kind(i + 2) != 'n') {
            return "404: Parsing";
        } else if (kind(i + 1) == ',') {
            if (isOut(i)) {
                return "370: Range";
            }
            take(i, i);
            i += 2;
        } else {
            if (isOut(i) || isOut(i + 2)) {
                return "384: Range";
            }
            if (lexemes[i].value >= lexemes[i + 2].value) {
                return "396: Parsing";
            }
            take(i, i + 2);
            i += 3;
        }
    }
    return "";
}

} // namespace

Plain_Result plain_list(const std::string &text, int32_t min, int32_t max)
{
    const auto value = [&](size_t i) {
        return i < text.size() ? static_cast<unsigned char>(text[i]) - '0' : -1;
    };
    const auto isOut = [&](size_t i) { return value(i) < min || value(i) > max; };
    Plain_Result result = {true, {}, ""};
    size_t i = 0;
    while (i < text.size()) {
        if (text[i] == ',') {
            i++;
            continue;
        }
        const char c2 = i + 1 < text.size() ? text[i + 1] : ',';
        if (c2 == ',' || c2 == ' ' || c2 == '\t') {
            if (isOut(i)) {
                return refused("Int_Range_To_Int_List:813: - Failed");
            }
            result.values.push_back(value(i));
            i += 2;
        } else if (c2 == '-') {
            if (isOut(i) || isOut(i + 2) || value(i) >= value(i + 2)) {
                return refused("Int_Range_To_Int_List:829: - Failed");
            }
            for (int32_t v = value(i); v <= value(i + 2); v++) {
                result.values.push_back(v);
            }
            i += 3;
        } else {
            char hexadecimal[3];
            snprintf(hexadecimal, sizeof hexadecimal, "%02X", static_cast<unsigned char>(c2));
            return refused(std::string("Int_Range_To_Int_List:835: - Failed (c2: '") + c2 + "' 0x" +
                           hexadecimal + ")");
        }
    }
    return result;
}

Plain_Result plain_vector(const std::string &text, int32_t min, int32_t max)
{
    std::vector<Lexeme> lexemes;
    std::set<int32_t> values;
    if (!split(text, &lexemes)) {
        return refused("Range_Str_To_Lexems:325: Parsing Error");
    }
    const std::string fault = walk(lexemes, min, max, &values);
    if (!fault.empty()) {
        return refused("Range_Lexems_To_Vector:" + fault + " Error");
    }
    if (values.empty()) {
        return refused("Range_Str_To_Vector:463: Parsing Error");
    }
    return {true, {values.begin(), values.end()}, ""};
}
