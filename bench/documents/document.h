// Made-up WordprocessingML 2003 documents as a word processor writes them: font table, lists, style
// sheet, paragraphs of runs, tables, headers, notes, comments, text boxes. What the converter has
// to make of them is known beforehand.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

struct DocumentPlan {
    uint32_t seed;       // the same document for the same plan
    size_t size;         // of the source in bytes, about
    std::string corpus;  // UTF-8 Lao text, a paragraph a line
    bool isPlain;        // legacy fonts have names that no font map has: all stays as it is
    bool isTidy;         // tags in normal form, no references to characters, no empty elements with
                         // an end tag: what an XML library writes back as it was
};

// The note that each document raises: the fonts of a part of a table style are in nobody's text.
constexpr char kNoteOfDocument[] = "unprocessed w:rFonts tag,child of w:rPr,of w:tStylePr";

struct MadeDocument {
    std::string source, converted;
};
MadeDocument MakeDocument(const DocumentPlan &plan);
