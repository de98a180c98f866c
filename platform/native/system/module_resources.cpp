// Compiled into a native module that has resources: holds the compiled resource file
// ORVEL_RESOURCES and tells the layer of it while the module is loaded.
#include "system/modules.h"
#include "system/resources.h"

asm(".pushsection .rodata\n"
    ".balign 4\n"
    "kModuleResourcesBegin:\n"
    ".incbin \"" ORVEL_RESOURCES "\"\n"
    "kModuleResourcesEnd:\n"
    ".popsection\n");

extern "C" {
extern const char kModuleResourcesBegin[] __attribute__((visibility("hidden")));
extern const char kModuleResourcesEnd[] __attribute__((visibility("hidden")));
}

__attribute__((constructor)) static void BringResources()
{
    AddModuleResources(ModuleOfAddress(kModuleResourcesBegin), kModuleResourcesBegin,
                       size_t(kModuleResourcesEnd - kModuleResourcesBegin));
}

__attribute__((destructor)) static void TakeResourcesBack()
{
    RemoveModuleResources(ModuleOfAddress(kModuleResourcesBegin));
}
