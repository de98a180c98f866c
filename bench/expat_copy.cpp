// The peer's callbacks get the output as their user data.
#include "expat_copy.h"

#include <cstdlib>
#include <cstring>
#include <initializer_list>

#include <expat.h>

#include "xml_output.h"

constexpr int kBlockSize = 1 << 16;

static void XMLCALL OnStart(void *data, const XML_Char *name, const XML_Char **attributes)
{
    XmlOutput *output = static_cast<XmlOutput *>(data);
    EndStartTag(output);
    PutBytes(output, "<", 1);
    PutString(output, name);
    for (; *attributes; attributes += 2) {
        PutBytes(output, " ", 1);
        PutString(output, attributes[0]);
        PutValue(output, attributes[1], strlen(attributes[1]));
    }
    output->isTagOpen = true;
}

static void XMLCALL OnEnd(void *data, const XML_Char *name)
{
    XmlOutput *output = static_cast<XmlOutput *>(data);
    PutString(output, output->isTagOpen ? "/" : "</");
    if (!output->isTagOpen)
        PutString(output, name);
    PutBytes(output, ">", 1);
    output->isTagOpen = false;
}

static void XMLCALL OnText(void *data, const XML_Char *text, int length)
{
    PutText(static_cast<XmlOutput *>(data), text, size_t(length));
}

static void XMLCALL OnDeclaration(void *data, const XML_Char *version, const XML_Char *encoding,
                                  int standalone)
{
    XmlOutput *output = static_cast<XmlOutput *>(data);
    PutString(output, "<?xml version=\"");
    PutString(output, version);
    PutString(output, "\" encoding=\"");
    PutString(output, encoding);
    PutString(output, standalone > 0 ? "\" standalone=\"yes\"?>\n" : "\"?>\n");
}

// In these documents all of them stand in front of the root, each on a line.
static void XMLCALL OnInstruction(void *data, const XML_Char *target, const XML_Char *text)
{
    XmlOutput *output = static_cast<XmlOutput *>(data);
    for (const char *piece : {"<?", target, " ", text, "?>\n"})
        PutString(output, piece);
}

static void ParseFile(XML_Parser parser, FILE *file)
{
    for (bool isLast = false; !isLast;) {
        void *block = XML_GetBuffer(parser, kBlockSize);
        size_t got = fread(block, 1, kBlockSize, file);
        isLast = got < kBlockSize;
        if (XML_ParseBuffer(parser, int(got), isLast) == XML_STATUS_ERROR) {
            fprintf(stderr, "expat: %s\n", XML_ErrorString(XML_GetErrorCode(parser)));
            exit(1);
        }
    }
}

void CopyByExpat(const char *source, const char *destination)
{
    static XmlOutput output;
    FILE *file = OpenOrExit(source, "rb");
    OpenOutput(&output, destination);
    XML_Parser parser = XML_ParserCreate(nullptr);
    XML_SetUserData(parser, &output);
    XML_SetElementHandler(parser, OnStart, OnEnd);
    XML_SetCharacterDataHandler(parser, OnText);
    XML_SetXmlDeclHandler(parser, OnDeclaration);
    XML_SetProcessingInstructionHandler(parser, OnInstruction);
    ParseFile(parser, file);
    XML_ParserFree(parser);
    CloseOutput(&output);
    fclose(file);
}
