// The peer's callbacks get the output as their user data.
#include "libxml2_copy.h"

#include <cstdlib>
#include <cstring>
#include <initializer_list>

#include <libxml/SAX2.h>
#include <libxml/parser.h>

#include "xml_output.h"

static const char *Plain(const xmlChar *text)
{
    return reinterpret_cast<const char *>(text);
}

static void PutName(XmlOutput *output, const xmlChar *prefix, const xmlChar *name)
{
    if (prefix) {
        PutString(output, Plain(prefix));
        PutBytes(output, ":", 1);
    }
    PutString(output, Plain(name));
}

static void PutEndTag(XmlOutput *output, const xmlChar *prefix, const xmlChar *name)
{
    PutString(output, output->isTagOpen ? "/" : "</");
    if (!output->isTagOpen)
        PutName(output, prefix, name);
    PutBytes(output, ">", 1);
    output->isTagOpen = false;
}

static void OnStart1(void *data, const xmlChar *name, const xmlChar **attributes)
{
    XmlOutput *output = static_cast<XmlOutput *>(data);
    EndStartTag(output);
    PutBytes(output, "<", 1);
    PutString(output, Plain(name));
    for (; attributes && *attributes; attributes += 2) {
        PutBytes(output, " ", 1);
        PutString(output, Plain(attributes[0]));
        PutValue(output, Plain(attributes[1]), strlen(Plain(attributes[1])));
    }
    output->isTagOpen = true;
}

static void OnEnd1(void *data, const xmlChar *name)
{
    PutEndTag(static_cast<XmlOutput *>(data), nullptr, name);
}

// The number of parameters is the library's.
static void OnStart2(void *data, const xmlChar *name, const xmlChar *prefix, const xmlChar *,
                     int spaceCount, const xmlChar **spaces, int count, int,
                     const xmlChar **attributes)
{
    XmlOutput *output = static_cast<XmlOutput *>(data);
    EndStartTag(output);
    PutBytes(output, "<", 1);
    PutName(output, prefix, name);
    for (int i = 0; i < spaceCount; ++i, spaces += 2) {
        PutString(output, spaces[0] ? " xmlns:" : " xmlns");
        PutString(output, spaces[0] ? Plain(spaces[0]) : "");
        PutValue(output, Plain(spaces[1]), strlen(Plain(spaces[1])));
    }
    for (int i = 0; i < count; ++i, attributes += 5) {
        PutBytes(output, " ", 1);
        PutName(output, attributes[1], attributes[0]);
        PutValue(output, Plain(attributes[3]), size_t(attributes[4] - attributes[3]));
    }
    output->isTagOpen = true;
}

static void OnEnd2(void *data, const xmlChar *name, const xmlChar *prefix, const xmlChar *)
{
    PutEndTag(static_cast<XmlOutput *>(data), prefix, name);
}

static void OnText(void *data, const xmlChar *text, int length)
{
    PutText(static_cast<XmlOutput *>(data), Plain(text), size_t(length));
}

static void OnDocument(void *data)
{
    PutString(static_cast<XmlOutput *>(data),
              "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n");
}

// In these documents all of them stand in front of the root, each on a line.
static void OnInstruction(void *data, const xmlChar *target, const xmlChar *text)
{
    for (const char *piece : {"<?", Plain(target), " ", Plain(text), "?>\n"})
        PutString(static_cast<XmlOutput *>(data), piece);
}

static xmlSAXHandler HandlerOf(Libxml2Interface version)
{
    xmlSAXHandler handler = {};
    handler.startDocument = OnDocument;
    handler.processingInstruction = OnInstruction;
    handler.characters = OnText;
    handler.ignorableWhitespace = OnText;
    if (version == kSax2) {
        handler.initialized = XML_SAX2_MAGIC;
        handler.startElementNs = OnStart2;
        handler.endElementNs = OnEnd2;
    } else {
        handler.startElement = OnStart1;
        handler.endElement = OnEnd1;
    }
    return handler;
}

void CopyByLibxml2(const char *source, const char *destination, Libxml2Interface version)
{
    static XmlOutput output;
    static char block[1 << 16];
    xmlSAXHandler handler = HandlerOf(version);
    FILE *file = OpenOrExit(source, "rb");
    OpenOutput(&output, destination);
    xmlParserCtxtPtr context = xmlCreatePushParserCtxt(&handler, &output, nullptr, 0, nullptr);
    xmlCtxtUseOptions(context, version == kSax2 ? XML_PARSE_HUGE : XML_PARSE_HUGE | XML_PARSE_SAX1);
    for (size_t got; (got = fread(block, 1, sizeof block, file)) > 0;)
        xmlParseChunk(context, block, int(got), 0);
    xmlParseChunk(context, block, 0, 1);
    if (!context->wellFormed) {
        fprintf(stderr, "libxml2: the document isn't well-formed\n");
        exit(1);
    }
    xmlFreeParserCtxt(context);
    CloseOutput(&output);
    fclose(file);
}
