// Lines through an operation of the library.
#include "text_font.h"

#include "commands.h"
#include "messages.h"
#include "session.h"

bool ChooseTextFont(std::string *font)
{
    *font = FindTextFont();
    if (font->empty())
        Tell("no font with Unicode text is registered; "
             "add one: orvel fonts add \"Saysettha Lao\" --code Unicode",
             kNotDone);
    return !font->empty();
}

int ConvertLine(const CodeTable &codes, KeyForm form, const KeyOperation &operation,
                std::string_view line, bool inBrackets, std::string *output)
{
    size_t before = output->size();
    if (ConvertKeyText(codes, form, operation, line, inBrackets, output))
        return kDone;
    output->resize(before);
    *output += line;
    return kNotDone;
}
