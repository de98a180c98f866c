// The converter of WordprocessingML 2003 as a whole. Its exports (documents/convert.cpp) call it;
// tests set the sizes that a conversion starts with.
#pragma once

#include "xmlconv/conversion.h"

// What lasts from one conversion to the next.
struct ConverterState {
    ConversionSizes sizes;  // what earlier documents needed, for the next one
};
extern ConverterState gConverter;

// Does a job whose font map is read: a failure is reported in the conversion.
void ConvertWordXml(Conversion *conversion, DocumentJob *job);
