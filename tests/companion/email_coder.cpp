#include "companion/email_coder.h"

#include <cstdint>
#include <cstring>

struct ChartRow {
    std::string key, text;
};

static std::string Key(std::initializer_list<int> codes)
{
    std::string key;
    for (int code : codes)
        key += char(code);
    return key;
}

// The first row of each key, which is the one that a coder uses.
static const ChartRow kInitials[] = {
    {Key({161}), "k"},       {Key({162}), "Kh"},       {Key({163}), "kh"},
    {Key({164}), "ng"},      {Key({165}), "j"},        {Key({166}), "s"},
    {Key({167}), "x"},       {Key({168}), "ny"},       {Key({169}), "d"},
    {Key({170}), "t"},       {Key({171}), "Th"},       {Key({234}), "th"},
    {Key({173}), "n"},       {Key({174}), "b"},        {Key({175}), "p"},
    {Key({176}), "Ph"},      {Key({177}), "F"},        {Key({178}), "ph"},
    {Key({179}), "f"},       {Key({180}), "m"},        {Key({181}), "y"},
    {Key({235}), "r"},       {Key({236}), "l"},        {Key({184}), "v"},
    {Key({185}), "H"},       {Key({185, 164}), "hng"}, {Key({185, 168}), "hny"},
    {Key({185, 173}), "hn"}, {Key({185, 180}), "hm"},  {Key({185, 235}), "hr"},
    {Key({185, 236}), "hl"}, {Key({185, 184}), "hv"},  {Key({186}), ""},
    {Key({186, 184}), "zw"}, {Key({187}), "h"},        {Key({187, 184}), "qw"},
};
static const ChartRow kClusters[] = {{Key({235}), "r"}, {Key({236}), "l"}, {Key({184}), "w"}};
static const ChartRow kVowels[] = {
    {Key({189}), "a"},
    {Key({241}), "a"},
    {Key({190}), "aa"},
    {Key({242}), "i"},
    {Key({243}), "ii"},
    {Key({244}), "ue"},
    {Key({245}), "eu"},
    {Key({247}), "u"},
    {Key({248}), "uu"},
    {Key({192, 189}), "e"},
    {Key({192}), "ee"},
    {Key({193, 189}), "E"},
    {Key({193}), "EE"},
    {Key({194, 189}), "o"},
    {Key({194}), "oo"},
    {Key({192, 190, 189}), "O"},
    {Key({240}), "OO"},
    {Key({192, 242}), "oe"},
    {Key({192, 243}), "er"},
    {Key({192, 244, 186}), "eua'"},
    {Key({192, 245, 186}), "eua"},
    {Key({246, 184, 189}), "ua'"},
    {Key({241, 184}), "ua'"},
    {Key({246, 184}), "ua"},
    {Key({196}), "ai"},
    {Key({195}), "ay"},
    {Key({192, 246, 190}), "ao"},
    {Key({191}), "am"},
    {Key({192, 241}), "e"},
    {Key({193, 241}), "E"},
    {Key({246}), "o"},
    {Key({241, 186}), "O"},
    {Key({186}), "OO"},
    {Key({184}), "ua"},
    {Key({192, 241, 168}), "ia'"},
    {Key({192, 168}), "ia"},
    {Key({188}), "ia"},
    {Key({241, 168}), "ayy"},
    {Key({241, 180}), "amm"},
};
static const ChartRow kFinals[] = {
    {Key({161}), "k"}, {Key({164}), "ng"}, {Key({166}), "s"}, {Key({167}), "x"}, {Key({168}), "y"},
    {Key({169}), "t"}, {Key({173}), "n"},  {Key({174}), "p"}, {Key({177}), "F"}, {Key({179}), "f"},
    {Key({180}), "m"}, {Key({235}), "r"},  {Key({236}), "l"}, {Key({184}), "w"},
};
static const ChartRow kTones[] = {
    {Key({250}), "1"}, {Key({251}), "2"}, {Key({252}), "3"}, {Key({253}), "4"}, {Key({254}), "*"}};

// ---- parsing ----

static bool IsIn(int code, const char *codes)
{
    return code && strchr(codes, code);
}

static bool IsLead(int code)
{
    return code >= 192 && code <= 196;
}

static bool IsTone(int code)
{
    return code >= 250 && code <= 254;
}

static bool IsConsonant(int code)
{
    return (code >= 161 && code <= 187) || (code >= 205 && code <= 207) ||
           (code >= 234 && code <= 236);
}

static bool IsFinal(int code)
{
    return IsIn(code, "\241\244\250\251\255\256\264\270");
}

static bool IsCluster(int first, int second)
{
    bool isSonorant = IsIn(first, "\244\250\255\264\265");
    if (IsIn(first, "\270\353\354") || !IsConsonant(first))
        return false;
    if (first == 185)
        return IsIn(second, "\244\250\255\264\265\270\353\354\371");
    if (isSonorant || first == 186)
        return second == 184;
    return IsIn(second, "\270\353\354\371");
}

enum VowelClass { kNoVowel, kOpenVowel, kClosedVowel, kEitherVowel, kStartOfVowel };

// Vowels in single signs; the starts of longer ones have a class of their own.
static VowelClass ClassOfVowel(const std::string &vowel)
{
    static const struct {
        std::string vowel;
        VowelClass itsClass;
    } kClasses[] = {
        {Key({189}), kOpenVowel},
        {Key({191}), kOpenVowel},
        {Key({195}), kOpenVowel},
        {Key({196}), kOpenVowel},
        {Key({240}), kOpenVowel},
        {Key({186}), kClosedVowel},
        {Key({188}), kClosedVowel},
        {Key({241}), kClosedVowel},
        {Key({246}), kClosedVowel},
        {Key({184}), kEitherVowel},
        {Key({190}), kEitherVowel},
        {Key({192}), kEitherVowel},
        {Key({193}), kEitherVowel},
        {Key({194}), kEitherVowel},
        {Key({242}), kEitherVowel},
        {Key({243}), kEitherVowel},
        {Key({244}), kEitherVowel},
        {Key({245}), kEitherVowel},
        {Key({247}), kEitherVowel},
        {Key({248}), kEitherVowel},
        {Key({241, 184}), kClosedVowel},
        {Key({241, 186}), kClosedVowel},
        {Key({241, 188}), kClosedVowel},
        {Key({246, 184}), kOpenVowel},
        {Key({192, 189}), kOpenVowel},
        {Key({192, 241}), kClosedVowel},
        {Key({192, 242}), kEitherVowel},
        {Key({192, 243}), kEitherVowel},
        {Key({192, 190}), kStartOfVowel},
        {Key({192, 244}), kStartOfVowel},
        {Key({192, 245}), kStartOfVowel},
        {Key({192, 246}), kStartOfVowel},
        {Key({193, 189}), kOpenVowel},
        {Key({193, 241}), kClosedVowel},
        {Key({194, 189}), kOpenVowel},
        {Key({192, 244, 186}), kEitherVowel},
        {Key({192, 245, 186}), kEitherVowel},
        {Key({192, 190, 189}), kOpenVowel},
        {Key({192, 246, 190}), kOpenVowel},
        {Key({246, 184, 189}), kOpenVowel},
    };
    for (const auto &row : kClasses)
        if (row.vowel == vowel)
            return row.itsClass;
    return kNoVowel;
}

// Codes for a vowel and a tone as two signs.
static std::string SingleSigns(const std::string &text)
{
    std::string signs;
    for (char c : text) {
        int code = uint8_t(c);
        int tone = code < 138 || code == 210 || code == 212 ? 250 : 251;
        if ((code >= 132 && code <= 137) || (code >= 152 && code <= 157))
            signs += {char(241 + (code - 132) % 20), char(tone)};
        else if (code == 210 || code == 211)
            signs += {char(240), char(tone)};
        else if (code == 212 || code == 213)
            signs += {char(tone), char(191)};
        else
            signs += c;
    }
    return signs;
}

static bool TakeRest(const std::string &text, size_t at, Syllable *parts)
{
    VowelClass vowel = ClassOfVowel(parts->vowel);
    bool hasFinal = at < text.size() && IsFinal(uint8_t(text[at]));
    if (vowel == kNoVowel || vowel == kStartOfVowel || (vowel == kClosedVowel && !hasFinal))
        return false;
    if (hasFinal && vowel != kOpenVowel)
        parts->final += text[at++];
    if (at + 1 == text.size() && uint8_t(text[at]) == 254)
        parts->final += text[at++];
    else if (at + 2 == text.size() && uint8_t(text[at + 1]) == 254)
        while (at < text.size())
            parts->final += text[at++];
    return at == text.size();
}

// withCluster: a second consonant that can be one is taken as one.
static bool ParseVariant(const std::string &text, bool withCluster, Syllable *parts)
{
    *parts = {};
    size_t at = 0;
    auto next = [&] { return at < text.size() ? uint8_t(text[at]) : 0; };
    if (IsLead(next()))
        parts->vowel += text[at++];
    if (!IsConsonant(next()))
        return false;
    parts->initial += text[at++];
    if (at == text.size())
        return !parts->vowel.empty();
    if (IsLead(next()))
        return false;
    if (withCluster && IsCluster(uint8_t(text[at - 1]), next()))
        parts->initial += text[at++];
    for (; at < text.size(); ++at) {
        if (IsTone(next()) && !parts->tone.empty())
            return false;
        if (IsTone(next()))
            parts->tone += text[at];
        else if (ClassOfVowel(parts->vowel + text[at]) != kNoVowel)
            parts->vowel += text[at];
        else
            break;
    }
    return TakeRest(text, at, parts);
}

bool ParseSyllable(const std::string &text, Syllable *parts)
{
    std::string signs = SingleSigns(text);
    size_t second = !signs.empty() && IsLead(uint8_t(signs[0])) ? 2 : 1;
    bool isOpen = second + 1 < signs.size() && uint8_t(signs[second]) == 184 &&
                  IsFinal(uint8_t(signs[second + 1]));
    if (!ParseVariant(signs, true, parts) && !(isOpen && ParseVariant(signs, false, parts)))
        return false;
    // WO behind a lead vowel and nothing else is the final.
    if (parts->final.empty() && parts->tone.empty() && parts->initial.size() == 2 &&
        uint8_t(parts->initial[1]) == 184 && IsIn(uint8_t(parts->vowel[0]), "\300\301")) {
        parts->final = parts->initial.substr(1);
        parts->initial.resize(1);
    }
    return true;
}

// ---- coding ----

template <size_t kCount>
static bool Find(const ChartRow (&rows)[kCount], const std::string &key, std::string *text)
{
    for (const ChartRow &row : rows)
        if (row.key == key) {
            *text += row.text;
            return true;
        }
    return false;
}

static std::string NormalInitial(const std::string &initial)
{
    std::string normal;
    for (char c : initial)
        switch (uint8_t(c)) {
        case 249: normal += char(235); break;
        case 205: return normal + Key({185, 236});
        case 206: return normal + Key({185, 173});
        case 207: return normal + Key({185, 180});
        default: normal += c;
        }
    return normal;
}

std::string CodeOfSyllable(Syllable parts)
{
    std::string initial = NormalInitial(parts.initial), cluster, code;
    if (parts.final.size() > 1 && uint8_t(parts.final[1]) == 254)
        parts.tone = char(254);
    parts.final = parts.final.substr(0, 1);
    if (!parts.final.empty() && Find(kVowels, parts.vowel + parts.final, &code)) {
        parts.vowel += parts.final;
        parts.final.clear();
    }
    code.clear();
    if (!Find(kInitials, initial, &code) && initial.size() > 1) {
        cluster = initial.substr(initial.size() - 1);
        Find(kInitials, initial.substr(0, initial.size() - 1), &code);
    }
    Find(kClusters, cluster, &code);
    Find(kVowels, parts.vowel, &code);
    Find(kFinals, parts.final, &code);
    Find(kTones, parts.tone, &code);
    return code;
}

// ---- cutting ----

std::vector<std::string> SplitSyllables(const std::string &text)
{
    std::vector<size_t> best(text.size() + 1), length(text.size() + 1);
    best[text.size()] = 1;
    for (size_t at = text.size(); at-- > 0;) {
        if (at && IsLead(uint8_t(text[at - 1])))
            continue;
        for (size_t n = 2; n <= 7 && at + n <= text.size(); ++n) {
            Syllable parts;
            if (!best[at + n] || best[at + n] + n * n < best[at] ||
                !ParseSyllable(text.substr(at, n), &parts))
                continue;
            best[at] = best[at + n] + n * n;
            length[at] = n;
        }
    }
    std::vector<std::string> syllables;
    if (best[0])
        for (size_t at = 0; at < text.size(); at += length[at])
            syllables.push_back(text.substr(at, length[at]));
    return syllables;
}
