// The relations of a part stand in a small part of its own, with targets that are relative to it.
#include "documents/relations.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "documents/scanner.h"

// Ends of the types of relations that lead up, by the ends of the parts' folders.
struct Step {
    std::string_view folder, type;
};
constexpr Step kSteps[] = {
    {"/slides/", "/slideLayout"}, {"/slideLayouts/", "/slideMaster"},
    {"/slideMasters/", "/theme"}, {"/notesSlides/", "/notesMaster"},
    {"/notesMasters/", "/theme"}, {"/handoutMasters/", "/theme"},
};
constexpr std::string_view kThemeFolder = "/theme/";

static std::string_view FolderOf(std::string_view name)
{
    return name.substr(0, name.rfind('/') + 1);
}

// The name of a target, "../" taken as it is meant: false for one that is too long.
static bool ResolveTarget(std::string_view folder, std::string_view target, char *path)
{
    if (target.starts_with('/')) {
        folder = {};
        target.remove_prefix(1);
    }
    while (target.starts_with("../")) {
        target.remove_prefix(3);
        if (!folder.empty())
            folder = FolderOf(folder.substr(0, folder.size() - 1));
    }
    int length = snprintf(path, kPartNameSize, "%.*s%.*s", int(folder.size()), folder.data(),
                          int(target.size()), target.data());
    return length > 0 && length < kPartNameSize;
}

// The first target of a type; false where there is none.
static bool FindTarget(std::string_view relations, std::string_view type, std::string_view *target)
{
    for (size_t start = relations.find('<'); start != relations.npos;
         start = relations.find('<', start + 1)) {
        size_t end = relations.find('>', start);
        std::string_view found;
        bool isOfType = false;
        Attribute attribute;
        if (end == relations.npos || end - start < 2)
            continue;
        std::string_view tag = relations.substr(start, end + 1 - start);
        for (size_t place = 0; NextAttribute(tag, &place, &attribute);) {
            isOfType |= attribute.name == "Type" && attribute.value.ends_with(type);
            if (attribute.name == "Target")
                found = attribute.value;
        }
        if (isOfType) {
            *target = found;
            return true;
        }
    }
    return false;
}

// The part above this one, by a relation of a type; -1 where there is none.
static bool FindAbove(Package *package, size_t number, std::string_view type)
{
    std::string_view name = package->parts[number].entry.name, folder = FolderOf(name), target;
    char path[kPartNameSize];
    Bytes relations = {};
    int length = snprintf(path, sizeof path, "%.*s_rels/%s.rels", int(folder.size()), folder.data(),
                          package->parts[number].entry.name + folder.size());
    const PackagePart *part = length < kPartNameSize ? FindPart(package, path) : nullptr;
    bool done = !part || ReadSmallPart(package, *part, &relations);
    if (done && FindTarget(TextOf(relations), type, &target) && ResolveTarget(folder, target, path))
        if (const PackagePart *above = FindPart(package, path))
            package->above[number] = int(above->entry.index);
    FreeBytes(&relations);
    return done;
}

bool FindPartsAbove(Package *package)
{
    if (package->document->job->format != kPptx)
        return true;  // in other packages all parts say what they are
    const PackagePart *presentation = FindPart(package, "ppt/presentation.xml");
    package->above = static_cast<int *>(malloc(package->count * sizeof(int)));
    if (!package->above)
        return FailPackage(package, kFailMemory);
    for (size_t i = 0; i < package->count; ++i) {
        std::string_view folder = FolderOf(package->parts[i].entry.name);
        package->above[i] =
            presentation && folder.ends_with(kThemeFolder) ? int(presentation->entry.index) : -1;
        for (const Step &step : kSteps)
            if (package->parts[i].isXml && folder.ends_with(step.folder) &&
                !FindAbove(package, i, step.type))
                return false;
    }
    package->document->partsAbove = package->above;
    package->document->partCount = package->count;
    return true;
}
