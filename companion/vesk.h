/* The companion module Vesk.dll: keyboard mode, font codes, recoding and dictionaries for a Lao
   text library. All texts are NUL-terminated bytes in the internal one-byte Lao code, unless a line
   says otherwise. A null pointer or a size of 0 is refused with the result for failure. One thread,
   the host's, calls the module. */
#ifndef VESK_H
#define VESK_H

#include <windows.h>

#ifdef __cplusplus
extern "C" {
#endif

enum {
    kMainDictionary = 1, /* MainDict.dat */
    kOldDictionary = 2,  /* OldDict.dat */
    kUserDictionary = 4, /* UserDict.dat */
    kWholeWord = 64,     /* FindWord: the bytes are a whole entry */
    kNewWordHandle = 128 /* FindWord, with 2 and 64: the result goes to GetNewWord */
};

/* What is known of a font code. The flag 16 says that the code is disabled. */
typedef struct FontCodeRecord {
    BYTE flags;
    BYTE breakChar; /* the byte for an invisible break in text of this code */
    char name[30];  /* terminated */
} FontCodeRecord;

/* Lengths of the words that start at a position: the bit of value 2^(L-1) stands for L bytes. */
typedef struct WordLengths {
    DWORD main, old, user;
} WordLengths;

/* ---- mode ---- */

/* Replaces the bits of the mode word under mask by those of value; gives the word from before.
   Bits 0 to 3 are the font code, bit 4 the Lao keyboard. The word starts as 1. */
DWORD WINAPI LaoMode(DWORD value, DWORD mask);

/* Turns the Lao keyboard on, or off for 0; gives the mode word from before. */
DWORD WINAPI LaoOn(LONG value);

/* There is nothing to set: 0. */
DWORD WINAPI Options(void);

/* A message box with name and version. */
void WINAPI AboutOrvel(DWORD value);

/* ---- font codes ---- */

/* Fills the 32 bytes of record for a code from 0 to 6 and gives 1; else 0. */
DWORD WINAPI FontCodeData(LONG code, FontCodeRecord *record);

/* Keeps the record and stores its flags for the user. 0: no such code, or the flags could not be
   stored (the record then holds until the module is unloaded). */
DWORD WINAPI SetFontCodeData(LONG code, const FontCodeRecord *record);

/* Converts text in place, in a buffer of size bytes: from a font code (code above 0) into the
   internal code, or from it into the font code -code. Signs without a counterpart become "?". 1
   done; 0 for an unknown code (text unchanged), or when the text did not fit: it is then cut behind
   the last sign that fits, and terminated. */
DWORD WINAPI RecodeString(char *text, DWORD size, LONG code);

/* Joins the signs that have a code together (vowel and tone, the two halves of AM) in place; the
   text never grows. A packed text packed again stays as it is. */
void WINAPI PackLao(char *text);

/* The one byte that PackLao makes of two, or 0. PackLao does nothing else: from the left to the
   right it joins the last byte written and the next one read where this joins them. */
DWORD WINAPI JoinLaoSigns(DWORD first, DWORD second);

/* ---- dictionaries ---- */

/* Makes the dictionary of that file name and bit available and gives its number of words, at most
   65535. A missing file is an empty dictionary. A path, another name or another bit gives 0. A
   loaded dictionary is not read again. */
DWORD WINAPI ReadLaoDict(const char *fileName, DWORD dictionary);

/* Is there an entry in one of the dictionaries of flags that begins with the first length bytes of
   text or, with flag 64, that is these bytes? Another form of a sign counts as the sign. 0 no.
   Nothing behind a terminator is read. With the flags 194 the result is the entry's handle for
   GetNewWord. */
DWORD WINAPI FindWord(const char *text, DWORD length, DWORD unused, DWORD flags);

/* For each dictionary asked for and loaded, the lengths of 2 to 15 bytes at which FindWord finds a
   whole entry at text, within bytes that can be part of a Lao word. A repeat sign (197) or ellipsis
   (198) behind an entry goes with it: its length is then one more. 0 for the other dictionaries. */
void WINAPI FindWordLengths(const char *text, DWORD dictionaries, WordLengths *lengths);

/* Stores a word of the user dictionary (bit 4) by its number, 1 to the count, in Lao order. 0: no
   such number, or no room for the word and its terminator. */
DWORD WINAPI GetWord(char *buffer, DWORD size, DWORD number, DWORD dictionary);

/* Stores the modern spelling of an old one by the handle that FindWord gave. A handle holds until
   the dictionaries are unloaded. 0: no such handle, or no room. */
DWORD WINAPI GetNewWord(char *buffer, DWORD size, DWORD handle);

/* Adds a word to the user dictionary and its file. 0 added; 1 shorter than two bytes; 2 already
   there; 3 not saved, or no word that a dictionary file can hold: nothing has changed then. */
LONG WINAPI AddWord(const char *word);

/* Adds many words with one reading and one writing of the file; each result is what AddWord would
   have given. 1 when the results are there; 0 without memory or for a null pointer. */
DWORD WINAPI AddWords(const char *const *words, int *results, DWORD count);

/* Removes a word from the user dictionary and its file. 0 removed; 1 not in the dictionary; 3 not
   saved, nothing has changed. */
LONG WINAPI DeleteWord(const char *word);

/* A number that changes whenever words of a dictionary do: what a host remembers of answers holds
   as long as it stays. */
DWORD WINAPI DictionariesRevision(void);

/* Frees all dictionaries; they can be read again. Gives 1. */
DWORD WINAPI UnloadDictionaries(void);

/* ---- e-mail coding ---- */

/* Decodes a stretch of e-mail coding, from start up to end, to Lao at output, and gives the number
   of bytes written: at most four for each byte read. No terminator is written. Bytes that spell
   nothing are copied. */
DWORD WINAPI AddLaoSyllable(char *output, const char *start, const char *end);

#ifdef __cplusplus
}
#endif
#endif
