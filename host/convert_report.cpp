// Lines of the report. Each has all members, so that a program needs to ask for none.
#include "convert_report.h"

#include <iterator>

#include "json.h"

constexpr const char *kFormatNames[] = {
    // ORDER DocumentFormat
    "",     "word-xml", "flat-opc", "docx", "xlsx", "pptx", "opendocument", "flat-opendocument",
    "html", "rtf",      "text",
};
static_assert(std::size(kFormatNames) == kPlainText + 1);

constexpr const char *kStatusNames[] = {
    // ORDER DocumentStatus
    "converted", "unchanged", "done before", "skipped", "failed", "stopped",
};
static_assert(std::size(kStatusNames) == size_t(DocumentStatus::kStopped) + 1);

const char *NameFormat(DWORD format)
{
    return format < std::size(kFormatNames) ? kFormatNames[format] : "";
}

const char *NameStatus(DocumentStatus status)
{
    return kStatusNames[size_t(status)];
}

static void AppendTextMember(std::string *json, const char *name, std::string_view text)
{
    *json += std::string("\"") + name + "\":";
    AppendJsonText(json, text);
    *json += ',';
}

static void AppendNumberMember(std::string *json, const char *name, unsigned long long number)
{
    *json += std::string("\"") + name + "\":" + std::to_string(number) + ",";
}

// A list or a record is written with a comma behind each of its parts; the last one goes.
static void CloseWith(std::string *json, char bracket)
{
    if (json->back() == ',')
        json->pop_back();
    *json += bracket;
}

static void AppendFonts(std::string *json, const std::vector<DocumentFont> &fonts)
{
    *json += "\"fonts\":[";
    for (const DocumentFont &font : fonts) {
        *json += '{';
        AppendTextMember(json, "name", font.name);
        AppendNumberMember(json, "characters", font.characters);
        AppendTextMember(json, "unicode", font.unicodeName);
        CloseWith(json, '}');
        *json += ',';
    }
    CloseWith(json, ']');
    *json += ',';
}

static void AppendNotes(std::string *json, const std::vector<std::string> &notes)
{
    *json += "\"notes\":[";
    for (const std::string &note : notes) {
        AppendJsonText(json, note);
        *json += ',';
    }
    CloseWith(json, ']');
    *json += ',';
}

std::string ReportLine(const ConvertTask &task, const DocumentFacts &facts)
{
    std::string json = "{";
    AppendTextMember(&json, "file", task.source);
    AppendTextMember(&json, "destination", task.destination);
    AppendTextMember(&json, "status", NameStatus(facts.status));
    AppendTextMember(&json, "format", facts.format);
    AppendNumberMember(&json, "characters", facts.characters);
    AppendFonts(&json, facts.fonts);
    AppendNotes(&json, facts.notes);
    AppendNumberMember(&json, "failure", facts.failure);
    AppendTextMember(&json, "words", facts.words);
    CloseWith(&json, '}');
    return json + "\n";
}
