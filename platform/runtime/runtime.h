// What the C runtimes of the two targets do differently: the one header of the layer that exists
// for both. Called by the library, the companion and the programs around them. Paths follow Windows
// rules: backslashes, and on native a drive letter is dropped. All of this belongs to one thread,
// as the library itself does.
#ifndef ORVEL_PLATFORM_RUNTIME_H
#define ORVEL_PLATFORM_RUNTIME_H

#include <stdio.h>
#include <windows.h>

#pragma GCC visibility push(default)

// Opens a file; none for a folder, a missing file or another mode than these three:
// "rt" reads text (CR LF comes as LF, byte 26 ends the file; it can't be positioned),
// "rb" and "wb" leave every byte as it is. The caller closes it with fclose.
FILE *OpenDataFile(const char *path, const char *mode);

// Replaces a file as a whole. BeginReplaceFile opens a new file in the same folder for the text
// that shall take the place of `path`; none when the folder can't be written to, or when `path` is
// something that a file can't replace (a folder, a device, a read-only file). EndReplaceFile closes
// it in any case. With `keep` and without an error so far it brings the data to the disk, renames
// the new file over the old one and gives 1; else it removes the new file, leaves the old one as it
// was and gives 0. Lines end as the target's text files do ("\n", on Windows CR LF).
// A process that is killed in between may leave its new file ("~" and ".tmp" around a number of the
// name) behind; the next replacement of the same file takes that file over.
FILE *BeginReplaceFile(const char *path);
int EndReplaceFile(FILE *file, int keep);

// Documents stand at UTF-8 paths, whatever the system's code page is. OpenDocument opens one as
// bytes. ReadDocument reads up to `size` bytes of it, 0 at its end, with CR LF as LF where text
// files have that. BeginReplaceDocument is BeginReplaceFile for such a path; behind KeepLineEnds,
// which comes before the first write, it takes bytes as they are. IsSameFile tells whether two of
// them name one file that is there, by whatever way. Utf8OfPath writes the UTF-8 form of a path in
// the system's code page: 1, or 0 when it doesn't fit.
FILE *OpenDocument(const char *path);
size_t ReadDocument(FILE *file, char *buffer, size_t size);
FILE *BeginReplaceDocument(const char *path);
void KeepLineEnds(FILE *file);
bool IsSameFile(const char *left, const char *right);
int Utf8OfPath(const char *path, char *utf8, int size);

// Writes where this user's registry is kept, for a message: the path of its file with slashes; on
// Windows the root of its keys. 1; or 0, and an empty text, when there is no folder for it or it
// doesn't fit into `size` bytes.
int NameRegistry(char *place, int size);

// Below, equal or above 0, as strcmp, with A to Z equal to a to z and all other bytes as they are,
// whatever locale the host has set.
int CompareNoCase(const char *left, const char *right);

// For programs that take UTF-8: the arguments as such, whatever the system's code page is (valid
// until the program ends; `given` where that is what it was given), a file opened for reading as
// bytes by a UTF-8 path of the system's own form (a descriptor, -1 with errno set), and the
// standard streams as bytes.
char **Utf8Arguments(int *count, char **given);
int OpenUtf8Path(const char *path);
void UseByteStreams();

// Every message box of this thread goes to the answerer instead of waiting for a person, and the
// answerer's result is the box's. None gives the boxes back to the person (on native: to standard
// error, each answered with its default button). The answerer gets those bits of the flags that
// can be read from a box on both targets; icon and place aren't among them. A text or caption
// longer than 4095 bytes comes cut. Gives the answerer from before.
constexpr UINT kBoxFlagsTold = MB_TYPEMASK | MB_DEFMASK;
typedef int (*MessageBoxAnswerer)(HWND owner, const char *text, const char *caption, UINT flags);
MessageBoxAnswerer SetMessageBoxAnswerer(MessageBoxAnswerer answerer);

#pragma GCC visibility pop

#endif
