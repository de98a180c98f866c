// The converter as a whole: what lasts from one conversion to the next. Its operations are exports
// (orvel.h); this header is for them and for tests, which set the sizes that a conversion starts
// with.
#pragma once

#include "xmlconv/conversion.h"

struct ConverterState {
    bool isBusy;            // a conversion runs; what hears percentages could call in again
    ConversionSizes sizes;  // what earlier documents needed, for the next one
};
extern ConverterState gConverter;
