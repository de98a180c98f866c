// Compiled into a native module that has resources: holds the compiled resource file
// ORVEL_RESOURCES and tells the layer of it while the module is loaded.
#include "system/modules.h"
#include "system/resources.h"

asm(".pushsection .rodata\n"
    ".balign 4\n"
    "ModuleResourcesBegin:\n"
    ".incbin \"" ORVEL_RESOURCES "\"\n"
    "ModuleResourcesEnd:\n"
    ".popsection\n");

extern "C" {
extern const char ModuleResourcesBegin[] __attribute__((visibility("hidden")));
extern const char ModuleResourcesEnd[] __attribute__((visibility("hidden")));
}

__attribute__((constructor)) static void BringResources()
{
    AddModuleResources(ModuleOfAddress(ModuleResourcesBegin), ModuleResourcesBegin,
                       (size_t)(ModuleResourcesEnd - ModuleResourcesBegin));
}

__attribute__((destructor)) static void TakeResourcesBack()
{
    RemoveModuleResources(ModuleOfAddress(ModuleResourcesBegin));
}
