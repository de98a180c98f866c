// A peer for documents: expat, every tag written again from its name and attributes.
#pragma once

void CopyByExpat(const char *source, const char *destination);
