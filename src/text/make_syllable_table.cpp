// Writes syllable_table.inc, the automaton behind SyllableLengths: a parse of n bytes and one of n
// + 1 bytes take the same steps up to byte n, so one walk over the bytes can tell all lengths at
// which a syllable ends. A state is what two readings of the text so far (cluster taken, cluster
// refused) can still become; states that no text tells apart are merged, and bytes that no state
// tells apart share a class. Built and run by hand: cmake --build build/native --target
// syllable-table
#include <algorithm>
#include <compare>
#include <cstdio>
#include <map>
#include <utility>
#include <vector>

#include "text/lao_code.h"
#include "text/syllable_parser.h"
#include "text/syllable_table.h"

constexpr int kWo = 184;

enum class Phase : uint8_t {
    kStart,
    kLead,     // a lead vowel was read
    kInitial,  // the first consonant was read
    kBody,     // cluster, tones and signs
    kFinal,    // the final consonant was read
    kPending,  // a consonant that only a cancellation mark can save
    kClosed,   // a closing sign was read: every longer text fits
    kDead,
};

// What one way of reading the text so far has come to. Two texts with equal readings can be
// continued by the same bytes, so the parts that no longer matter are always zero.
struct Reading {
    Phase phase;
    uint8_t vowel[4];  // the pattern, terminated
    uint8_t signs;     // bytes in it
    uint8_t tone;      // 1: there was one
    uint8_t initial;   // only while the next byte may join it as a cluster
    uint8_t waits;  // cluster refused, the final consonant that makes this reading count is to come
    auto operator<=>(const Reading &) const = default;
};

typedef std::pair<Reading, Reading> State;             // cluster taken, cluster refused
typedef std::vector<std::vector<uint16_t>> StateRows;  // [state][byte]: a cell as in the table

static const Reading kDeadReading = {Phase::kDead, {}, 0, 0, 0, 0};
static const Reading kClosedReading = {Phase::kClosed, {}, 0, 0, 0, 0};

// Whether a syllable may end behind the last byte read.
static bool IsComplete(const Reading &reading)
{
    VowelClass vowelClass = ClassifyVowelPattern(reading.vowel);
    switch (reading.phase) {
    case Phase::kInitial: return !reading.waits && reading.signs > 0;
    case Phase::kBody:
        return !reading.waits && (vowelClass == kClosedVowel || vowelClass == kOpenVowel);
    case Phase::kFinal:
    case Phase::kClosed: return !reading.waits;
    default: return false;
    }
}

// The bytes behind a complete vowel and final: a closing sign, or a consonant to be silenced.
static Reading Close(int byte)
{
    if (IsWordSign(byte) || IsCancellationMark(byte))
        return kClosedReading;
    return {Phase::kPending, {}, 0, 0, 0, 0};
}

// A tone, one more vowel sign, the final, or what closes: in this order, as the parser takes them.
static Reading StepBody(Reading reading, int byte)
{
    VowelClass vowelClass = ClassifyVowelPattern(reading.vowel);
    Reading grown = reading;
    grown.phase = Phase::kBody;
    grown.initial = 0;
    if (IsToneCode(byte)) {
        grown.tone = 1;
        return reading.tone ? kDeadReading : grown;
    }
    if (reading.signs < 3) {
        grown.vowel[grown.signs++] = uint8_t(byte);
        if (ClassifyVowelPattern(grown.vowel) != kNoPattern)
            return grown;
    }
    if (vowelClass == kNoPattern || vowelClass == kUnfinished)
        return kDeadReading;
    if (vowelClass == kNeedsFinal && !IsFinalConsonant(byte))
        return kDeadReading;
    if (vowelClass != kClosedVowel && IsFinalConsonant(byte))
        return {Phase::kFinal, {}, 0, 0, 0, 0};
    return Close(byte);
}

static Reading StepInitial(const Reading &reading, int byte, bool takesCluster)
{
    const uint8_t pair[2] = {reading.initial, uint8_t(byte)};
    if (IsLeadVowel(byte))
        return kDeadReading;
    if (!takesCluster || !IsClusterPair(pair))
        return StepBody(reading, byte);
    Reading grown = reading;
    grown.phase = Phase::kBody;
    grown.initial = 0;
    return grown;
}

static Reading StepStart(Reading reading, int byte)
{
    if (reading.phase == Phase::kStart && IsLeadVowel(byte)) {
        reading.phase = Phase::kLead;
        reading.vowel[reading.signs++] = uint8_t(byte);
        return reading;
    }
    if (!IsConsonantCode(byte))
        return kDeadReading;
    reading.phase = Phase::kInitial;
    reading.initial = uint8_t(byte);
    return reading;
}

// A byte that isn't Lao ends a run, and a syllable never goes over it.
static Reading Step(const Reading &reading, int byte, bool takesCluster, bool *endedBefore)
{
    if (!IsLaoByte(byte))
        return kDeadReading;
    switch (reading.phase) {
    case Phase::kStart:
    case Phase::kLead: return StepStart(reading, byte);
    case Phase::kInitial: return StepInitial(reading, byte, takesCluster);
    case Phase::kBody: return StepBody(reading, byte);
    case Phase::kFinal: return Close(byte);
    case Phase::kPending:
        *endedBefore |= IsCancellationMark(byte);
        return IsCancellationMark(byte) ? kClosedReading : kDeadReading;
    default: return reading;
    }
}

// The second reading begins where a consonant is followed by WO, and counts from the final
// consonant behind WO on.
static Reading StepSecond(const State &from, int byte, bool *endedBefore)
{
    const auto &[taken, refused] = from;
    const uint8_t pair[2] = {taken.initial, uint8_t(byte)};
    if (taken.phase == Phase::kInitial && byte == kWo && IsClusterPair(pair)) {
        Reading begun = Step(taken, byte, false, endedBefore);
        begun.waits = begun.phase != Phase::kDead;
        return begun;
    }
    if (refused.phase == Phase::kDead || (refused.waits && !IsFinalConsonant(byte)))
        return kDeadReading;
    Reading going = refused;
    going.waits = 0;
    return Step(going, byte, false, endedBefore);
}

static State StepBoth(const State &from, int byte, int *flags)
{
    bool endedBefore = false;
    State to = {Step(from.first, byte, true, &endedBefore), StepSecond(from, byte, &endedBefore)};
    if (to.first == kClosedReading || to.second == kClosedReading)
        to = {kClosedReading, kDeadReading};
    bool endsHere = IsComplete(to.first) || IsComplete(to.second);
    *flags = (endsHere ? kEndsHere : 0) | (endedBefore ? kEndedBefore : 0);
    return to;
}

// All states that any text leads to, by breadth: the row of a state is made when it is reached.
static StateRows ListStates()
{
    State start = {{Phase::kStart, {}, 0, 0, 0, 0}, kDeadReading};
    std::map<State, int> numbers = {{start, 0}};
    std::vector<State> states = {start};
    StateRows rows;
    for (size_t s = 0; s < states.size(); ++s) {
        std::vector<uint16_t> row;
        for (int byte = 0; byte < 256; ++byte) {
            int flags;
            State to = StepBoth(states[s], byte, &flags);
            auto [place, isNew] = numbers.emplace(to, int(states.size()));
            if (isNew)
                states.push_back(to);
            row.push_back(uint16_t(place->second << kStateShift | flags));
        }
        rows.push_back(row);
    }
    return rows;
}

static uint16_t Renumber(uint16_t cell, const std::vector<int> &groups)
{
    return uint16_t(groups[cell >> kStateShift] << kStateShift | (cell & kEndFlags));
}

// Parts states as long as their rows tell them apart (Moore).
static StateRows MergeStates(const StateRows &rows)
{
    std::vector<int> groups(rows.size(), 0);
    for (size_t count = 0;;) {
        std::map<std::vector<int>, int> seen;
        std::vector<int> refined;
        for (size_t s = 0; s < rows.size(); ++s) {
            std::vector<int> key = {groups[s]};
            for (uint16_t cell : rows[s])
                key.push_back(Renumber(cell, groups));
            refined.push_back(seen.emplace(key, int(seen.size())).first->second);
        }
        groups = refined;
        if (seen.size() == count)
            break;
        count = seen.size();
    }
    StateRows merged(size_t(*std::max_element(groups.begin(), groups.end())) + 1);
    for (size_t s = 0; s < rows.size(); ++s) {
        std::vector<uint16_t> &row = merged[size_t(groups[s])];
        row.clear();
        for (uint16_t cell : rows[s])
            row.push_back(Renumber(cell, groups));
    }
    return merged;
}

// Bytes whose columns are equal share a class: *bytesOfClasses has one byte of each.
static std::vector<int> ClassBytes(const StateRows &rows, std::vector<int> *bytesOfClasses)
{
    std::map<std::vector<uint16_t>, int> columns;
    std::vector<int> classes;
    for (size_t byte = 0; byte < 256; ++byte) {
        std::vector<uint16_t> column;
        for (const std::vector<uint16_t> &row : rows)
            column.push_back(row[byte]);
        auto [place, isNew] = columns.emplace(column, int(columns.size()));
        if (isNew)
            bytesOfClasses->push_back(int(byte));
        classes.push_back(place->second);
    }
    return classes;
}

static void PrintTable(const StateRows &rows)
{
    std::vector<int> bytes;
    std::vector<int> classes = ClassBytes(rows, &bytes);
    printf("// Made by make_syllable_table.cpp for breaks/lengths.cpp; %zu states, %zu classes of "
           "bytes.\n",
           rows.size(), bytes.size());
    printf("// clang-format off\nconstexpr uint8_t kSyllableClasses[256] = {");
    for (size_t byte = 0; byte < 256; ++byte)
        printf("%s%3d,", byte % 16 ? " " : "\n    ", classes[byte]);
    printf("\n};\n\n// A row for each state: next state << %d | flags.\n", kStateShift);
    printf("constexpr uint16_t kSyllableNext[%zu][%d] = {\n", rows.size(), kClassRoom);
    for (const std::vector<uint16_t> &row : rows) {
        printf("    {");
        for (int byte : bytes)
            printf("%3d,", row[size_t(byte)]);
        printf("},\n");
    }
    int dead = rows[kStartState][0] >> kStateShift;
    printf("};\n// clang-format on\n\nconstexpr uint32_t kDeadState = %d;  // no byte leads out\n",
           dead);
}

int main()
{
    PrintTable(MergeStates(ListStates()));
}
