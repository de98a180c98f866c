// Buffered output of the peers that rewrite XML, and the escaping that they leave to their caller.
#pragma once

#include <cstddef>
#include <cstdio>

struct XmlOutput {
    FILE *file;
    bool isTagOpen;  // a start tag is written but for its end, so that <a/> stays <a/>
    size_t used;
    char block[1 << 16];
};

// Opens the file or ends the program with a message.
FILE *OpenOrExit(const char *path, const char *mode);
void OpenOutput(XmlOutput *output, const char *path);
void CloseOutput(XmlOutput *output);

void PutBytes(XmlOutput *output, const char *text, size_t length);
void PutString(XmlOutput *output, const char *text);

// Writes an attribute's value in quotes; a text, behind the end of the start tag before it.
void PutValue(XmlOutput *output, const char *text, size_t length);
void PutText(XmlOutput *output, const char *text, size_t length);

// Ends the start tag that is open, if one is.
void EndStartTag(XmlOutput *output);
