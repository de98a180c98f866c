// The fast road of conversions beside the plain one: the same calls in the same order, with
// settings, tables and words changed between them, must give the same texts, results and boxes.
// What the fast one remembers would show here if it were used too long.
#include <random>

#include "keytables/builtin_tables.h"
#include "keytables/fast_convert.h"
#include "keytables/key_support.h"

using FastRoad = KeyTables;

struct Outcome {
    std::string sort, roman, coded, decoded;
    std::vector<std::string> boxes;
    bool operator==(const Outcome &) const = default;
};

static std::string ShowOutcome(const Outcome &outcome)
{
    return outcome.sort + "\n" + outcome.roman + "\n" + outcome.coded + "\n" +
           ShowCode(outcome.decoded);
}

// One text of a sequence of calls. Settings change in front of it when `step` isn't null.
struct Call {
    std::string text;
    void (*step)();
    DWORD size;
};

static Outcome OutcomeOf(const Call &call)
{
    Outcome outcome;
    ExpectBoxes boxes({});
    if (call.step)
        call.step();
    DWORD state = 0, decodeState = 0;
    outcome.sort = KeyOf(call.text, call.size);
    outcome.roman = RomanOf(call.text, call.size);
    outcome.coded = EncodedOf(call.text, &state, call.size);
    outcome.decoded = DecodedOf(outcome.coded, &decodeState, call.size) + char('0' + state) +
                      char('0' + decodeState);
    for (const auto &box : boxes.shown)
        outcome.boxes.push_back(box.text);
    boxes.pieces.assign(boxes.shown.size(), "");
    return outcome;
}

static std::vector<Outcome> OutcomesOf(const std::vector<Call> &calls, bool isPlain)
{
    std::vector<Outcome> outcomes;
    CloseFastRoad(isPlain);
    ForgetLastWord();
    for (const Call &call : calls)
        outcomes.push_back(OutcomeOf(call));
    CloseFastRoad(false);
    return outcomes;
}

// Every call comes three times in a row: divided, divided and remembered, out of the memory.
static void ExpectSameRoads(const std::vector<Call> &calls, void (*reset)())
{
    std::vector<Call> calledThrice;
    for (const Call &call : calls) {
        calledThrice.push_back(call);
        calledThrice.push_back({call.text, nullptr, call.size});
        calledThrice.push_back({call.text, nullptr, call.size});
    }
    reset();
    std::vector<Outcome> plain = OutcomesOf(calledThrice, true);
    reset();
    std::vector<Outcome> fast = OutcomesOf(calledThrice, false);
    for (size_t i = 0; i < calledThrice.size(); ++i)
        if (plain[i] != fast[i]) {
            ADD_FAILURE() << i << " " << ShowCode(calledThrice[i].text) << ", size "
                          << calledThrice[i].size << "\nplain\n"
                          << ShowOutcome(plain[i]) << "\nfast\n"
                          << ShowOutcome(fast[i]);
            return;  // what follows may be the same fault again
        }
}

// ---- settings ----

static const uint8_t kTellingBytes[] = {161, 164, 168, 169, 170, 173, 174, 180, 184, 185, 186, 235,
                                        236, 249, 188, 189, 190, 191, 192, 193, 194, 195, 241, 242,
                                        244, 245, 246, 240, 250, 251, 254, 204, 197, 198, 132, 133,
                                        135, 137, 152, 157, 237, 208, 172, 205, 206, 207, 224, 160};

static std::string TellingBytes(std::mt19937 *random, size_t count)
{
    std::string bytes;
    while (count--)
        bytes += char(kTellingBytes[(*random)() % std::size(kTellingBytes)]);
    return bytes;
}

// Words that no dictionary has, so that words and syllables get in each other's way everywhere.
static void UseOddWords(const char *file, unsigned seed)
{
    std::mt19937 random(seed);
    std::string lines = "ຂກາຣ\n";  // behind it a mark may stand that silences its last letter
    for (int i = 0; i < 1500; ++i)
        lines += TextOfCode(TellingBytes(&random, 2 + random() % 3)) + "\n";
    ReplaceDictionary(file, lines);
}

static void UseWorkFontOfCode(WORD code)
{
    RemoveFontFromList("Saysettha Lao");
    AddFontToList("Saysettha Lao", "", code, 100, 0);
}

static void ResetSettings()
{
    UseWorkFontOfCode(1);
    for (const char *name : {"UserDict.dat", "MainDict.dat"})
        RemoveDataFile(name);
    ReplaceDictionary("OldDict.dat", "ກາສາ\tກາ\n");
    SetSortKey(nullptr);
    SetRomanKey(nullptr);
    SetOrvelOption("b", 12, 0);
    SetOrvelOption("d", 1, 0);
    SetOrvelOption("r", 32, 0);
    SetOrvelOption("s", 0, 0);
}

static std::string UserWord()
{
    return CodeOfText("ດີລາວ");
}

// A romanization in which much is odd: long texts, failures shown, patterns, a missing letter.
static void LoadOddRoman()
{
    LoadRomanFile("I2VFX?  -\nInitial\n\xA1 abcdefg\n\xA6 1234567\n\xAE b\n\xEC l\nCluster\n0\n"
                  "Vowel\n0\n\xBE aaaaaaa\n\xBD\nFinal\n\xA1 kk\nTone\n0\n\xFA 1\nChange\n"
                  "?#\xBE\xA8 ai\n*\xBE ??\nNumber\n0 0\n1 1\n2 2\n");
}

// One whose pattern looks behind the run.
static void LoadFarPattern()
{
    LoadRomanFile(ControlFileOf(kBuiltInRomanTable, "I2VF #0") + "Change\n\xA1\xBE, far\n?\xBE. !\n"
                                                                 "Number\n");
}

static void (*const kSteps[])() = {
    [] { SetOrvelOption("b", 4, 0); },
    [] { SetOrvelOption("b", 8, 0); },
    [] { SetOrvelOption("b", 0, 0); },
    [] { SetOrvelOption("d", 0, 0); },
    [] { SetOrvelOption("d", 7, 0); },
    [] { SetOrvelOption("d", 5, 0); },
    [] { SetOrvelOption("d", 2, 0); },
    [] { AddUserWord(UserWord().c_str()); },
    [] { DeleteUserWord(UserWord().c_str()); },
    [] { UseOddWords("MainDict.dat", 1); },
    [] { UseOddWords("MainDict.dat", 2); },
    [] { UseOddWords("UserDict.dat", 3); },
    [] {
        RemoveDataFile("MainDict.dat");
        ReplaceDictionary("OldDict.dat", "ລາວດີ\tລາວ\n");
    },
    [] { SetOrvelOption("r", 31, 0); },
    [] { SetOrvelOption("r", 0, 0); },
    [] { SetOrvelOption("r", 256 + 45, 0); },
    [] { SetOrvelOption("s", 1, 0); },
    [] { SetOrvelOption("s", 0, 0); },
    [] { LoadSortFile(ControlFileOf(kBuiltInSortTable, "I?")); },
    [] { LoadSortKey("Initial\n\xA1 zz\n", 13); },
    [] { SetSortKey(nullptr); },
    [] { LoadOddRoman(); },
    [] { LoadFarPattern(); },
    [] { LoadRomanFile("I2VF . |\n" + ControlFileOf(kBuiltInRomanTable, "I2VF")); },
    [] { LoadRomanFile(ControlFileOf(kBuiltInRomanTable, "IVF? #45")); },
    [] { SetRomanKey(nullptr); },
    [] { SetRomanKey(nullptr); },
    [] { SetRomanKey(nullptr); },
    [] { RemoveFontFromList("Saysettha Lao"); },
    [] { UseWorkFontOfCode(2); },
    [] { UseWorkFontOfCode(0); },
};

// ---- texts ----

static const char kOtherBytes[] = "  ,.-\x1F|a[]1!~\n\x8C";

static std::string RandomText(std::mt19937 *random)
{
    const std::vector<std::string> &words = DictionaryWords();
    std::string text;
    for (size_t left = (*random)() % 9; left--;) {
        unsigned kind = (*random)() % 16;
        if (kind < 4)
            text += words[(*random)() % words.size()];
        else if (kind < 5)
            text += UserWord();
        else if (kind < 13)
            text += TellingBytes(random, 1 + (*random)() % 2);
        else if (kind < 15)
            text += kOtherBytes[(*random)() % (std::size(kOtherBytes) - 1)];
        else
            text += char((*random)() % 100 == 0 ? (*random)() % 31 + 1 : 161);
    }
    return text;
}

// Most have room; of the others some just fit, and some don't while they are divided.
static DWORD RandomSize(std::mt19937 *random, const std::string &text)
{
    unsigned kind = (*random)() % 8;
    return kind > 1 ? 4096 : DWORD(text.size() * (kind == 0 ? 1 : 4) + (*random)() % 60);
}

TEST_F(FastRoad, GivesTheSameForRandomTextsAndSettings)
{
    std::mt19937 random(13);
    std::vector<Call> calls;
    std::vector<std::string> before;
    for (int i = 0; i < 12000; ++i) {
        bool comesAgain = !before.empty() && random() % 3 == 0;  // as settings change
        std::string text = comesAgain ? before[random() % before.size()] : RandomText(&random);
        void (*step)() = random() % 60 ? nullptr : kSteps[random() % std::size(kSteps)];
        calls.push_back({text, step, RandomSize(&random, text)});
        if (before.size() < 20)
            before.push_back(text);
        else
            before[random() % before.size()] = text;
    }
    ExpectSameRoads(calls, ResetSettings);
}

// Each change of settings right behind texts that were just remembered under others.
TEST_F(FastRoad, GivesTheSameWhenSettingsChange)
{
    std::vector<Call> calls;
    std::vector<std::string> texts = {CodeOfText("ຂກາຣ໌"), CodeOfText("ສະບາຍດີລາວ ໆ"),
                                      CodeOfText("ກາສາກາຍ,ງ,"), CodeOfText("ກາ, ນາງາມໆຯ")};
    for (void (*step)() : kSteps)
        for (void (*change)() : {ResetSettings, step})
            for (const std::string &text : texts)
                calls.push_back({text, text == texts[0] ? change : nullptr, 1024});
    ExpectSameRoads(calls, ResetSettings);
}

// Runs at the limits of the memory and of the fast division, bad ones among them.
TEST_F(FastRoad, GivesTheSameForRunsOfEveryLength)
{
    std::mt19937 random(14);
    std::vector<Call> calls;
    for (size_t length = 1; length < 1300; length += length < 300 ? 1 : 97) {
        std::string run, bad;
        while (run.size() < length)
            run += DictionaryWords()[random() % DictionaryWords().size()];
        while (bad.size() < length)
            bad += TellingBytes(&random, 1);
        for (const std::string &text : {run, bad})
            calls.push_back({"a " + text.substr(0, length) + ", b", nullptr, 65536});
    }
    ExpectSameRoads(calls, ResetSettings);
}

TEST_F(FastRoad, GivesTheSameForRealText)
{
    std::vector<Call> calls;
    for (const char *name : kCorpusFiles)
        for (const std::string &line : SplitLines(ReadCorpus(name))) {
            void (*step)() = calls.size() % 500 ? nullptr : kSteps[calls.size() / 500 % 16];
            calls.push_back({CodeOfText(line), step, 16384});
        }
    for (const std::string &word : DictionaryWords())
        calls.push_back({word, nullptr, 1024});
    ExpectSameRoads(calls, ResetSettings);
}
