// Documents of the kind that came before packages: a file system in a file, whose directory tells
// by the names of its streams what the document is. None of them is converted, and whoever has one
// is told how to make a document of today out of it.
#pragma once

#include <cstdio>
#include <string_view>

#include "document_kind.h"

constexpr std::string_view kOldDocumentHead = "\xD0\xCF\x11\xE0";

// What is told of a file that begins so. Its position afterwards is anywhere.
KindRefusal LookAtOldDocument(FILE *file);
