// Reads a dialog template, of the plain or the extended form: first the dialog, then its controls
// in their order.
#ifndef ORVEL_PLATFORM_NATIVE_CONTROLS_DIALOG_TEMPLATE_H
#define ORVEL_PLATFORM_NATIVE_CONTROLS_DIALOG_TEMPLATE_H

#include "system/resources.h"

constexpr size_t kTemplateText = 256;  // bytes of a text, terminator included; longer ones are cut

struct TemplateReader {
    ResourceBytes bytes;  // of the template, the module's
    size_t at;            // bytes read so far
    bool isExtended;      // the controls are of the form that the head had
    bool isBad;           // the template ended too early, or isn't of either form
};

struct TemplateItem {
    DWORD style, exStyle;
    int x, y, width, height;  // in dialog units
    DWORD id;                 // of a control
    char className[kTemplateText], text[kTemplateText];
};

struct TemplateHead {
    TemplateItem dialog;
    int controls;   // how many follow
    int pointSize;  // of the font; 0: the system's font, and the next field means nothing
    LOGFONTA font;
};

// False for a template that can't be read.
bool ReadTemplateHead(TemplateReader *reader, TemplateHead *head);
bool ReadTemplateControl(TemplateReader *reader, TemplateItem *item);

#endif
