// Where the options of this user stand, for messages: the registry is the system's own here, and
// its editor shows the root under this name.
#include <string.h>

#include "runtime.h"

int NameRegistry(char *place, int size)
{
    static const char kRoot[] = "HKEY_CURRENT_USER";
    bool fits = place && size >= int(sizeof kRoot);
    if (fits)
        memcpy(place, kRoot, sizeof kRoot);
    else if (place && size > 0)
        place[0] = '\0';
    return fits;
}
