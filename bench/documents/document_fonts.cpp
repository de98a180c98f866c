// Fonts of a made-up document, and the tags that name them.
#include <cctype>

#include "document_writer.h"
#include "xmlconv/font_map_table.h"

void Put(DocumentWriter *writer, const std::string &piece)
{
    PutChanged(writer, piece, piece);
}

void PutChanged(DocumentWriter *writer, const std::string &source, const std::string &converted)
{
    writer->made.source += source;
    writer->made.converted += converted;
}

void PutUntidy(DocumentWriter *writer, const std::string &source, const std::string &normal)
{
    PutChanged(writer, writer->isTidy ? normal : source, normal);
}

void MakeFaces(DocumentWriter *writer, bool isPlain)
{
    for (const FontMapEntry &row : kBuiltInFontMap) {
        std::string name = row.legacyName, unicodeName = row.unicodeName;
        if (isPlain)
            unicodeName = name = "Z" + name.substr(1);
        writer->faces.push_back({name, unicodeName, row.conversionType, !isPlain});
    }
    writer->legacyFaces = unsigned(writer->faces.size());
    for (const char *name : {"Times New Roman", "Saysettha OT", "Arial", "Phetsarath OT"})
        writer->faces.push_back({name, name, kUnicodeType, false});
}

static int OtherFace(DocumentWriter *writer)
{
    return int(writer->legacyFaces + Random(writer, 4));
}

int AnyFace(DocumentWriter *writer)
{
    if (Random(writer, 4) == 0)
        return OtherFace(writer);
    return int(writer->nextFace++ % writer->legacyFaces);
}

// An attribute with a font's name; legacy ones are known in all capitals too.
static void PutFace(DocumentWriter *writer, const char *attribute, int face)
{
    std::string name = writer->faces[size_t(face)].name;
    if (writer->faces[size_t(face)].isLegacy && Random(writer, 20) == 0)
        for (char &c : name)
            c = char(toupper(c));
    PutChanged(writer, std::string(attribute) + "=\"" + name + "\"",
               std::string(attribute) + "=\"" + writer->faces[size_t(face)].unicodeName + "\"");
}

void PutFontName(DocumentWriter *writer, const char *before, int face, const char *behind)
{
    PutFace(writer, before, face);
    Put(writer, behind);
}

// The ways to set a text in a font: pairs of a slot (ascii, fareast, h-ansi, cs) and the font F of
// the text or another one.
struct FontsForm {
    const char *hint, *slots;
    unsigned owners;  // a bit for each FontsOwner
    int hintLeft;     // the slot that the owner's block reads from now on
};
enum { kAnyHint = -1, kAllOwners = 7, kStyleAlone = 1 };
// clang-format off
constexpr FontsForm kFontsForms[] = {
    {"",        "aFhF",     kAllOwners,  0},  // how nearly all text is set
    {"",        "aFhF",     kAllOwners,  0},
    {"",        "aFhF",     kAllOwners,  0},
    {"",        "aFfFhFcF", kAllOwners,  kAnyHint},
    {"default", "aFfFhFcF", kAllOwners,  kAnyHint},
    {"h-ansi",  "aFhFcO",   kAllOwners,  0},
    {"ascii",   "aFhO",     kAllOwners,  0},
    {"fareast", "aOfFhOcO", kAllOwners,  1},
    {"cs",      "aOhOcF",   kAllOwners,  2},
    {"",        "fFaO",     kStyleAlone, 1},  // the first slot of a style's block decides
    {"",        "cFhO",     kStyleAlone, 2},
    {"",        "hOaF",     kStyleAlone, 0},
};
// clang-format on

// Without a hint a block of a paragraph or run reads the slot that the last hint left.
static const FontsForm &ChooseForm(DocumentWriter *writer, FontsOwner owner)
{
    for (;;) {
        const FontsForm &form = kFontsForms[Random(writer, std::size(kFontsForms))];
        bool saysWhich = owner == kOfStyle || *form.hint || form.hintLeft == kAnyHint ||
                         writer->hints[owner] == form.hintLeft;
        if ((form.owners >> owner & 1) && saysWhich)
            return form;
    }
}

static const char *NameOfSlot(char letter)
{
    return letter == 'a'   ? " w:ascii"
           : letter == 'f' ? " w:fareast"
           : letter == 'h' ? " w:h-ansi"
                           : " w:cs";
}

void PutFonts(DocumentWriter *writer, int face, FontsOwner owner)
{
    const FontsForm &form = ChooseForm(writer, owner);
    std::string hint = *form.hint ? std::string(" w:hint=\"") + form.hint + "\"" : "";
    bool isInFront = Random(writer, 2), hasComplex = false;
    int ascii = kNoFace;
    Put(writer, "<w:rFonts" + (isInFront ? hint : ""));
    for (const char *slot = form.slots; *slot; slot += 2) {
        int named = slot[1] == 'F' ? face : Random(writer, 3) ? OtherFace(writer) : AnyFace(writer);
        PutFace(writer, NameOfSlot(*slot), named);
        ascii = *slot == 'a' ? named : ascii;
        hasComplex = hasComplex || *slot == 'c';
    }
    Put(writer, isInFront ? "" : hint);
    if (ascii != kNoFace && writer->faces[size_t(ascii)].isLegacy && !hasComplex)
        PutChanged(writer, "", " w:cs=\"" + writer->faces[size_t(ascii)].unicodeName + "\"");
    Put(writer, "/>");
    if (form.hintLeft != kAnyHint)
        writer->hints[owner] = form.hintLeft;
}

void PutUnusedFonts(DocumentWriter *writer, int face)
{
    Put(writer, "<w:rFonts");
    PutFace(writer, " w:ascii", face);
    PutFace(writer, " w:h-ansi", face);
    Put(writer, Random(writer, 2) ? " w:hint=\"default\"/>" : "/>");
}
