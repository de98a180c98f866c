/* Orvel: Lao text for word processors, keyboard managers and tools.
 *
 * Plain functions over NUL-terminated byte text and caller-supplied buffers, for C and C++. On
 * Windows they are undecorated WINAPI exports of orvel.dll, elsewhere of liborvel.so.
 *
 * Words used below
 *   internal code  one byte for each Lao sign (font code 0). Bytes below 128 are ASCII, but byte 45
 *                  is the invisible break mark (U+200B) and byte 140 the real hyphen.
 *   font code      0 to 15, names an encoding of Lao fonts: 0 internal code, 1 the byte form that a
 *                  Unicode host passes in, from 2 up those of the companion module.
 *   size           capacity of the caller's buffer in bytes, terminator included, unless a
 *                  description gives another unit. Nothing is written behind it.
 *
 * Results: 1 done, 0 not done, -1 no such font, or a length, as each description says. What the
 * user must see is shown in a message box by the library itself; the caller sees only the 0. A
 * pointer that is null where a text or a buffer is needed gives the result of a failure.
 *
 * All state is process-wide and belongs to one thread, the host's. Call Initialize first; before it
 * no font is known, and the text operations leave all text as it came.
 */
#ifndef ORVEL_H
#define ORVEL_H

#include <windows.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Start and stop ---- */

/* Entry point of the library: reason 1 attaches, 0 detaches, all others do nothing. Always 1. */
int WINAPI LibMain(HINSTANCE instance, DWORD reason, void *reserved);

/* Starts the library: binds the companion module Vesk.dll from the install folder (only while a
 * window of the class "KerrinDLL" exists), loads the options and the list of fonts. 1 when it is
 * started, also when it was before; 0 when it isn't, and a later call tries again. */
int WINAPI Initialize(void);

/* Initialize for a host that brings its own Vesk.dll: binds the one in `folder` (full path, below
 * 260 bytes), and doesn't ask the registry for the install folder. Needs nothing that is writable.
 * Results as of Initialize. */
int WINAPI InitializeFrom(const char *folder);

/* Kept for old hosts: does nothing. */
void WINAPI SetLaoDefaultFont(const char *name);

/* ---- Companion module ---- */

/* Replaces the bits of the companion's mode word under mask by those of value; the word from
 * before. Bits 0 to 3: current font code; bit 4: Lao keyboard on. LaoMode(0, 0) only reads. 0 when
 * unbound. */
DWORD WINAPI LaoMode(DWORD value, DWORD mask);

/* Turns the Lao keyboard on (value 1). The companion's result; 0 when unbound. */
int WINAPI LaoOn(int value);

/* Copies word `number` (from 1, in the companion's order) of a dictionary (4: user) to the buffer,
 * in the internal code. Nonzero when a word was stored. */
int WINAPI GetWord(char *buffer, DWORD size, int number, int dictionary);

/* Copies the modern spelling that belongs to the handle of an old one. Nonzero when stored. */
int WINAPI GetNewWord(char *buffer, DWORD size, int handle);

/* Normalises internal-code text in place: joins a vowel sign and its tone mark, and AM written in
 * two signs. Never lengthens. */
void WINAPI PackLao(char *text);

/* Recodes text in place. Positive code: from that font code to the internal code; negative: from
 * the internal code to font code -code. Nonzero when done; 0 when the text did not fit `size` (it
 * is then cut, terminated), for a code that the companion doesn't know or without a companion (the
 * text is then as it was). */
int WINAPI RecodeString(char *text, DWORD size, int code);

/* Shows the companion's about box. */
void WINAPI ShowAbout(HWND ignored, int value);

/* ---- Folders and messages ---- */

/* Copies the install folder (registry value "Install" of HKEY_LOCAL_MACHINE\Software\Orvel\Orvel7).
 * Its length; 0 when it is unknown or does not fit. */
int WINAPI GetOrvelAppDir(char *buffer, DWORD size);

/* Copies the data folder: the common application data folder and "Orvel"; it is created. Its
 * length; 0 when there is none or it does not fit. */
int WINAPI GetOrvelDataDir(char *buffer, DWORD size);

/* A message box. Without an owner it is task modal and comes to the foreground; without a caption
 * it has "Orvel". Result and flags as MessageBoxA. */
int WINAPI OrvelMsg(HWND window, const char *text, const char *caption, UINT flags);

/* Moves a window to the middle of the screen and makes it topmost. Nonzero when moved. */
BOOL WINAPI CenterWindow(HWND window);

/* ---- Text analysis ---- */

/* 1 when the low 8 bits of code are a Lao sign of the internal code that may stand in a run of Lao:
 * letters, vowel signs, tones, repeat sign, ellipsis. Digits and punctuation are none. */
int WINAPI IsLaoCode(int code);

/* ---- Breaks ---- */

/* Bytes of the internal code that look like punctuation and mean something else. */
enum {
    kHiddenBreak = 31, /* in romanized text, and in Lao text of older versions */
    kBreakMark = 45,   /* U+200B: written by WrapText, taken out by it too */
    kRealHyphen = 140  /* U+002D, since 45 is taken */
};

/* Flags of WrapText and DivideText: whether to insert breaks, and where. Without one of the last
 * three the option "b", which has the same values, says where. */
enum { kInsertBreaks = 3, kSyllableBreaks = 4, kWordBreaks = 8, kBothBreaks = 12 };

/* What starts at a byte of a side buffer, and what a chunk of DivideText is. */
enum {
    kInside = 0, /* nothing; in a side buffer also the first chunk of a run that needs no telling */
    kSyllable = 1,  /* a syllable that no dictionary knows */
    kMainWord = 2,  /* a word of the main dictionary */
    kUserWord = 3,  /* a word of the user dictionary */
    kOldWord = 4,   /* a word of the old spellings */
    kBadStretch = 5 /* what can't be divided */
};

/* Copies source, a text in the code of font, to buffer with an invisible break mark at each
 * boundary inside a run of Lao. Old marks are taken out, signs are normalised. Flags without a bit
 * of kInsertBreaks only take marks out.
 *
 * The length of source must be below size (a message says so otherwise), and size bounds the
 * result. An unknown font means text that isn't Lao: buffer holds source as it is, result 1. 1
 * done, 0 failed. */
int WINAPI WrapText(const char *source, char *buffer, DWORD size, const char *font, DWORD flags);

/* As WrapText, and tells in side what starts at each byte of the text in the internal code, marks
 * included (with a font of code 0 or 1: of the result), from kInside to kBadStretch. The first
 * chunk of a run shows only kOldWord and kBadStretch. side needs `size` bytes and gets no
 * terminator; a null side is WrapText alone, and one that SetBreakBuf armed is then dropped. */
int WINAPI WrapLaoEx(const char *source, char *buffer, BYTE *side, DWORD size, const char *font,
                     DWORD flags);

/* Arms side for the next WrapText. 1 when armed; 0 when one is armed already or side is null. */
int WINAPI SetBreakBuf(BYTE *side);

/* A piece of a run of Lao: a word, a syllable, or a stretch that can't be divided. */
typedef struct LaoChunk {
    DWORD start, end; /* of its characters, in the text; old marks between two chunks belong to
                         neither */
    BYTE kind;        /* kInside to kBadStretch */
    BYTE hasBreak;    /* 1: a break belongs in front of it, 0: it begins its run */
} LaoChunk;

/* The breaks of WrapText for a host whose text stays where it is: divides `length` 16-bit
 * characters and stores the chunks of all runs of Lao in their order, at most `room` of them; one
 * for each character is always enough. Characters that aren't Lao end a run, U+200B doesn't and is
 * passed over. Flags as of WrapText. The number of chunks, which may be above room; -1 before
 * Initialize, without memory or for a null pointer. */
int WINAPI DivideText(const WCHAR *text, DWORD length, LaoChunk *chunks, DWORD room, DWORD flags);

/* The same for `length` bytes of UTF-8: the places of the chunks are in bytes, and `length` / 3 of
 * them are always enough. Bytes that are no UTF-8 end a run; so does a U+200B with half a character
 * behind it, which without that would become another one. */
int WINAPI DivideUtf8(const char *text, DWORD length, LaoChunk *chunks, DWORD room, DWORD flags);

/* The byte that stands for an invisible break in text of the font's code; 0 for an unknown font. */
int WINAPI GetBreakChar(const char *font);

/* 1 when word, a whole word in the internal code, is an old spelling: buffer then holds the modern
 * one. */
int WINAPI FindOldWord(const char *word, char *buffer, DWORD size);

/* ---- User dictionary ---- */

/* Loads the user's words and gives their number; GetWord(…, 4) lists them by it. 0 without a
 * companion. */
int WINAPI CountUserWords(void);

/* Results of AddUserWord; any other value is kWordNotSaved too. */
enum { kWordAdded = 0, kWordTooShort = 1, kWordThereAlready = 2, kWordNotSaved = 3 };

/* Adds a word in the internal code, of two bytes at least, and saves the dictionary. */
int WINAPI AddUserWord(const char *word);

/* Adds `count` words at once and saves the dictionary once; results receives what AddUserWord would
 * have given for each. 1 when that was done; 0, with no results, for a null pointer. */
int WINAPI AddUserWords(const char *const *words, int *results, DWORD count);

/* Results of DeleteUserWord; any other value: it could not be saved. */
enum { kWordDeleted = 0, kWordNotThere = 1 };

/* Removes a word in the internal code and saves the dictionary. */
int WINAPI DeleteUserWord(const char *word);

/* ---- Fonts ---- */

/* Reads LaoFonts.dat of the data folder into the table of fonts; without the file one default font
 * stands there. The number of records; 0 before Initialize. */
int WINAPI ReadFontList(void);

/* Writes the table to LaoFonts.dat, beside the old file and renamed over it. 1 when written; 0 with
 * a message when not, and the old file stands. */
int WINAPI WriteFontList(void);

/* Adds a font: name and substitute (may be null) cut to 36 bytes, its font code, the substitute's
 * size in percent (below 1: 100), and whether it uses the private-use characters. A substitute that
 * isn't registered becomes the first font of the current code. A font without a name stays in
 * memory alone: the file has no line for it. 1 when added and written; 0 when refused (table full
 * at 127, name there already, no such font code, a name with a comma, a line end or byte 26 in it
 * or blanks around it, which the file could not give back) or when it was added but the file could
 * not be written. */
int WINAPI AddFontToList(const char *name, const char *substitute, WORD code, short scale,
                         WORD extended);

/* Takes a font out of the table and writes the list. 1 done; 0 when the name is unknown, it is the
 * only font, or the list could not be written (the font stays). */
int WINAPI RemoveFontFromList(const char *name);

/* Index of a font from 0, and its font code; -1 when it isn't registered. Names are compared
 * without regard to case. LaoFontType and OldFontType are FontType under old names; ThaiFontType
 * gives 0. */
int WINAPI FontIndex(const char *name);
int WINAPI FontType(const char *name);
int WINAPI LaoFontType(const char *name);
int WINAPI OldFontType(const char *name);
int WINAPI ThaiFontType(const char *name);

/* Record `number` (from 1): name and substitute, each cut or zero-filled to exactly `size` bytes
 * (37 hold any), the scale in percent where scale isn't null. Result the font code, -1 behind the
 * last. */
int WINAPI GetLaoFontInfo(char *name, char *substitute, DWORD size, int *scale, int number);

/* Copies the companion's name of a font code, as in "Unicode" (at most 31 bytes). Its length; 0
 * when there is no such code or it does not fit. */
int WINAPI GetFontCodeName(char *buffer, DWORD size, int code);

/* ---- Substitutes ----
 * Changes are in memory until WriteFontList. */

/* Name of the first font of a code: its length, 0 when there is none or it does not fit. */
int WINAPI GetDefaultFontName(char *buffer, DWORD size, int code);

/* The font that replaces a font (may be empty). 1 when copied; 0 when the font is unknown or the
 * name does not fit. Setting cuts the substitute to 36 bytes and doesn't look at it further; the
 * list's file takes it up to a comma or line end. */
int WINAPI GetReplacementFontName(const char *name, char *buffer, DWORD size);
int WINAPI SetReplacementFontName(const char *name, const char *substitute);

/* The substitute's size in percent of the font's; 100 for an unknown font. Setting takes 10 to
 * 1000: 1 set, 0 not. */
int WINAPI GetReplacementFontSize(const char *name);
int WINAPI SetReplacementFontSize(const char *name, int scale);

/* Gives a font the substitute whose name is most like its own among the fonts of the current code
 * (a common beginning of two letters or more, case counts), or the first of that code. 1 set; 0
 * when the font is unknown or the current code has no font. */
int WINAPI UpdateReplacementFont(const char *name);

/* Whether a font uses the private-use characters U+E000 to U+E01F: 1 or 0, also 0 for an unknown
 * font. Setting: 1 set; 0 when the font is unknown or isn't one of a Unicode code, which alone keep
 * it in the list's file. */
int WINAPI GetFontExtended(const char *name);
int WINAPI SetFontExtended(const char *name, int extended);

/* ---- Recoding and keyboards ---- */

/* Copies text in the code of font to buffer, recoded to the current font code (LaoMode). 1 done,
 * also as a plain copy where the font is unknown or has the current code; 0 when source does not
 * fit size, buffer is then untouched. A text that outgrows size in recoding is cut. */
int WINAPI ConvertText(const char *source, char *buffer, DWORD size, const char *font);

/* The keyboard's number, which is its font code, and 16 while it is on. */
int WINAPI GetKeybdNo(void);

/* Turns keyboard `number` on (its low four bits), or off for a negative number. Always 1. */
int WINAPI SetKeybdNo(int number);

/* Turns the keyboard of a name on, and gives 1; an empty name turns it off. A name that begins with
 * "Enhl" is keyboard 0, one with "Lao9" keyboard 1, any other the first font code whose name begins
 * with it (GetFontCodeName), so that it may be shortened. Case doesn't count. 0 for an unknown
 * name. */
int WINAPI SetKeyboard(const char *name);

/* Turns the Lao keyboard on. The companion's result. */
int WINAPI SetLaoDefaultKeyboard(void);

/* ---- Sort keys and romanization ----
 * Both work with a table: the built-in one, or a control file of the data folder
 * (docs/control-files.md). Text is in the code of font. */

/* The control file for sort keys, a plain file name; null or an empty name means the built-in
 * table. file is trimmed in place. The file is read at once: one that is missing or bad shows a
 * message, and the built-in table is used. 1 done, whichever table it became. */
int WINAPI SetSortKey(char *file);

/* SetSortKey for a control file that stands elsewhere: takes its content, `size` bytes as they
 * stand in the file. 1 loaded; 0 for a null pointer, or with a message when the content is bad: the
 * built-in table is then used. */
int WINAPI LoadSortKey(const char *content, DWORD size);

/* Writes the sort key of text: "##" and digits that, compared as bytes, put Lao in its order
 * (option "s"). Other bytes pass through. Text longer than size less 3 is cut. With the built-in
 * table a syllable takes eight bytes. 1 done, also for an unknown font ("##" and the text as it
 * is); 0 when size is below 8, or with a message when the key needs more than size less 2 bytes
 * (what fitted stands there). */
int WINAPI SortString(const char *text, char *key, DWORD size, const char *font);

/* The control file for romanization, as SetSortKey has it. */
int WINAPI SetRomanKey(char *file);

/* The content of a control file for romanization, as LoadSortKey has it. */
int WINAPI LoadRomanKey(const char *content, DWORD size);

/* Copies the name of the font in which romanized text is to be shown, cut to size: "Arial", or
 * what a control file says. */
void WINAPI GetRomanFont(char *buffer, DWORD size);

/* Writes text in Latin letters, with the byte of option "r" between words (option "b" with 8) or
 * syllables (without). A repeat sign gives the last syllable again, also that of the call before;
 * where there is none of two letters or more it gives "(rep.)". An ellipsis gives "(etc.)". 1
 * done, also as a plain copy for an unknown font; 0 when text does not fit size, or with a
 * message when the result needs more than size less 2 bytes (what fitted stands there). */
int WINAPI Romanize(const char *text, char *output, DWORD size, const char *font);

/* ---- E-mail coding ----
 * Lao as ASCII: a syllable in letters with its tone as a digit, "-" between syllables, Latin
 * passages between [ and ], "#" the repeat sign, "&" the ellipsis. state is the caller's: 0 at
 * the start of a document, then what the call before left (1 inside of brackets); coding and
 * decoding each need their own. */

/* Codes text, which is in the code of font. 1 done, also as a plain copy for an unknown font; 0
 * when text does not fit size, or with a message when the result needs more than size less 2
 * bytes. */
int WINAPI EncodeEmail(const char *text, char *output, DWORD size, const char *font, DWORD *state);

/* Decodes text to the internal code, breaks as break marks; font is not looked at. 1 done; 0 when
 * text does not fit size (output is untouched) or the result doesn't (it is cut). */
int WINAPI DecodeEmail(const char *text, char *output, DWORD size, const char *font, DWORD *state);

/* ---- Unicode ---- */

/* Internal code to 16-bit characters. characters holds, on entry, one character for each byte of
 * text: what to keep where a byte has no character of its own (all of ASCII but the break mark).
 * capacity counts characters. The number written, without a terminator; -1 when they do not fit. */
int WINAPI LaoToUnicode(const char *text, WCHAR *characters, DWORD capacity, int font);

/* 16-bit characters to internal code. text holds, on entry, one byte for each character: what to
 * keep where a character has no code; its length sets their number. capacity counts bytes. The
 * length after PackLao; -1 when the text's length isn't below capacity. */
int WINAPI UnicodeToLao(const WCHAR *characters, char *text, DWORD capacity, int font);

/* ---- Options ---- */

/* Bits of option "d". */
enum { kMainDictionary = 1, kOldDictionary = 2, kUserDictionary = 4 };

/* Values of option "o": what becomes of old spellings. */
enum { kKeepOldSpelling = 0, kAskOldSpelling = 1, kChangeOldSpelling = 2 };

/* Values of option "r": the byte between romanized syllables or words. */
enum { kNoRomanBreak = 0, kHiddenRomanBreak = kHiddenBreak, kVisibleRomanBreak = 32 };

/* Values of option "s". */
enum { kVowelsLastSort = 0, kNaturalSort = 1 };

/* Options by letter, in either case: b breaks (kSyllableBreaks, kWordBreaks, kBothBreaks), d
 * dictionaries, o old spellings, r romanized breaks, s sort order, c font substitution (0 auto, 1
 * user), f, i, e (hosts' own). GetOrvelOption gives 0 for an unknown letter. SetOrvelOption: 1 set,
 * and saved when save isn't 0; 0 for an unknown letter or when it could not be saved. */
WORD WINAPI GetOrvelOption(const char *key);
int WINAPI SetOrvelOption(const char *key, WORD value, int save);

/* ---- Dialogs ----
 *
 * The library's own, beside the host's window. Texts in them are in the internal code, and the Lao
 * keyboard is on where Lao is typed; the mode word is as before when a dialog has gone. */

/* The options, with the keyboards, the fonts and the user's words behind its buttons. Starts the
 * library. 1 for OK: the options are saved; 0 for Cancel, which takes them as they are stored, and
 * when the library can't be started. */
int WINAPI OrvelOptions(HWND parent);

/* The words of the user dictionary, to be added and deleted; word (may be null) stands in the box
 * for a new one. Always 1. */
int WINAPI ModifyDictionary(HWND parent, const char *word);

/* A line of text to be edited: buffer holds it before and after. Starts the library. 1 for Return,
 * 2 for Return with Shift; 0 for Escape, where buffer holds what the box last showed when it gained
 * the focus, and when the library can't be started or buffer can't hold a text. */
int WINAPI EditLao(HWND parent, char *buffer, int size);

/* Asks what is to replace the font of this name: choice holds the name of a registered font of the
 * font code (may be empty) and receives the one selected, where it fits. -1 always, 1 for the
 * selection only, 0 once only; also -1 when the dialog can't be opened. */
int WINAPI ChooseLaoFont(const char *font, char *choice, int size, int code);

/* Asks for up to three sort keys, each a column from 1, a type and an order; the sorting is the
 * host's. On entry keys[0], when above 0, is the column to offer first. On 1 each array of three
 * and both flags (0 or 1) are filled. Types of the first key: 0 Lao order, 1 alphabetic, 2 numeric,
 * 3 date; those of the others are one less. Orders: 0 ascending, 1 descending. A second or third
 * key that wasn't chosen has 0 in all. 0 when the user cancelled: nothing is filled. */
int WINAPI ShowLaoSortDialog(HWND owner, short columns, short *keys, short *types, short *orders,
                             short *keepKeys, short *skipHeader);

/* ---- Find and replace ----
 *
 * A modeless dialog that collects what is to be found; the finding is the host's, who is called
 * back while a button is pressed, and may then call the library, and close the dialog too. */

/* What the find dialog calls its host with; the result isn't looked at. */
enum { kFindNext = 1, kReplaceFound = 2, kReplaceAll = 3 };
typedef int(WINAPI *FindCallback)(DWORD action);

/* Opens the dialog, owned by the active window, as one to find (replace 0) or to replace. text, in
 * the internal code, is what to find; null: what was last. 1 when it is up; 0 when one is open
 * already, or without a callback. */
int WINAPI StartOrvelFind(HWND ignored, int replace, const char *text, int ignoreBreaks,
                          FindCallback callback);

/* What stands in the dialog: both texts, cut to size (at most 127), whether breaks are ignored (0
 * or 1), and the direction: 0 down, 1 up. 1; 0 when no dialog is open: nothing is filled. */
int WINAPI GetFindReplaceText(char *findText, char *replaceText, int size, DWORD *ignoreBreaks,
                              DWORD *direction);

/* Keeps the dialog in front of all windows (1), or lets it go behind (0). 1 done, 0 not. */
int WINAPI ShowFindDialog(int topmost);

/* ---- Spelling ----
 *
 * A modeless dialog that shows words one at a time; finding and changing them is the host's, who is
 * called back while a button is pressed. It then acts, hands over the next word by SetMarkedText,
 * and says whether there is one. */

/* What the spelling dialog calls its host with, the first time as it opens. The host gives nonzero
 * for a next word, 0 for the end; to the last two its result isn't looked at. */
enum {
    kSpellCancelled = 0, /* the user ended the check; also comes twice */
    kSpellDone = 1,      /* the host's 0 has ended it */
    kSpellIgnore = 10,   /* go on to the next word; first of all, to the first */
    kSpellIgnoreAll = 20,
    kSpellChange = 30, /* GetChangedText has the new word */
    kSpellChangeAll = 40
};
typedef int(WINAPI *SpellCallback)(DWORD action);

/* Opens the dialog. 1 when it is up; 0 when one is open already, or without a callback. */
int WINAPI StartSpellChecking(HWND parent, SpellCallback callback);

/* The word that the dialog is to show and what is suggested in its place, in the internal code with
 * break marks, cut at 126 bytes; a null leaves the old one. kind: kBadStretch for a bad spelling,
 * kOldWord for an old one. Always 1. */
int WINAPI SetMarkedText(const char *marked, const char *suggested, int kind);

/* The word as the user changed it, without break marks. 1 when copied; 0 when it doesn't fit. */
int WINAPI GetChangedText(char *buffer, int size);

/* ---- Progress meter ----
 * A small window with a label, a bar and a Cancel button, for long work. It stands on the host's
 * message loop, or is painted by the updates alone while the host is busy. Keys go to it while it
 * is the active window: Escape and Space press Cancel. A host may send it the registered message
 * "ORVEL_SetLabel" with a new label as second parameter. */

/* Opens the meter at 0, in the middle of the screen, with parent as its owner. 1 when it is up; 0
 * when one is open already or it can't be made. */
int WINAPI StartOrvelMeter(HWND parent, const char *label);

/* Shows a percentage; above 100 counts as 100. 1 when Cancel was pressed since the last call, which
 * only says so: the host decides. 0 otherwise and when no meter is open. */
int WINAPI UpdateOrvelMeter(DWORD percent);

/* Closes the meter. 1 when it is gone; 0 when none was open. It also goes with its parent. */
int WINAPI CloseOrvelMeter(void);

/* ---- Documents ---- */

/* Why a conversion failed. Users quote these numbers, so none ever changes its meaning. Those from
 * 891 to 920 and 1004 to 1006 come without a box. */
enum ConversionFailure {
    kConverted = 0,
    kFailValueQuotes = 232,     /* a value isn't in double quotes; comes out as kFailAttributes */
    kFailTagMemory = 250,       /* no memory for a tag */
    kFailTagName = 259,         /* a tag's name is empty or longer than 63 bytes */
    kFailAttributes = 269,      /* the attributes of a tag can't be read */
    kFailAttributeMemory = 274, /* no memory for a tag's attributes */
    kFailAttributeName = 279,   /* an attribute's name is empty or longer than 63 bytes */
    kFailValueMemory = 288,     /* no memory for an attribute's value */
    kFailAddedAttribute = 473,  /* no memory to add an attribute, and no memory for its value: */
    kFailAddedValue = 478,      /* both come out as one of the three behind the next */
    kFailStyleMemory = 506,     /* no memory for the fonts of a style */
    kFailStyleFonts = 509,      /* no memory at the fonts of a style, of a paragraph, of a run */
    kFailParagraphFonts = 514,
    kFailRunFonts = 519,
    kFailStart = 891,      /* the library can't be started */
    kFailNoPath = 920,     /* a path is null */
    kFailOpen = 926,       /* a file can't be opened, or both are one */
    kFailMemory = 938,     /* no memory for the buffers or the styles */
    kFailCutTag = 1000,    /* the document ends inside a tag; with kAllFormats, inside an element */
    kFailText = 1001,      /* a text can't be converted */
    kFailWrite = 1002,     /* the new file can't be written */
    kFailFontMap = 1003,   /* the font map of a job can't be read or has no row */
    kFailBusy = 1004,      /* a conversion is running */
    kFailJobSize = 1005,   /* a job's size field isn't the size of this library's record */
    kFailStopped = 1006,   /* the job's shallStop said so */
    kFailFormat = 1007,    /* the source is no document of a format that is known; jobs with
                              kAllFormats alone, as are all below */
    kFailPackage = 1008,   /* a packed document is damaged */
    kFailEncrypted = 1009, /* a document is protected by a password */
    kFailTooLarge = 1010,  /* a part of a package is too large to be true, or a tag too long */
    kFailDepth = 1011,     /* elements or groups stand in one another too deep */
    kFailEncoding = 1012,  /* the source is in an encoding that isn't read */
    kFailTextFont = 1013   /* a plain text, and the job's textFont is no legacy font */
};

/* Converts a WordprocessingML 2003 document from legacy Lao fonts to Unicode text and Unicode
 * fonts, by FontList.ini of the data folder where that is there, else by the built-in font map.
 * Paths are in the system's code page. The new file takes its place when it is whole; on a failure
 * the old one stays. A meter shows the progress; its Cancel changes nothing. Notes and failures are
 * shown in a box. kConverted, also with notes, or why it failed. */
DWORD WINAPI ConvertFile(const char *source, const char *destination);

/* Text in the code of a legacy font to 16-bit characters: of a font of the font map (FontList.ini
 * of the data folder, else the built-in one), or of a registered one whose code the document
 * converter knows too (0, 2 and 3). capacity counts characters; two for each byte are always
 * enough. The number written, without a terminator; -1 for another font, and when they do not fit.
 */
int WINAPI LegacyToUnicode(const char *text, WCHAR *characters, DWORD capacity, const char *font);

/* A font of a document's text, and how many characters are set in it. */
typedef struct DocumentFont {
    char name[64];
    char unicodeName[64]; /* what the font map puts in its place, empty for a font that stays */
    DWORD characters;
} DocumentFont;

/* What a document is; told by its content and not by its name. */
enum DocumentFormat {
    kNoFormat = 0, /* none that is known; of a job: find it out */
    kWordXml2003,  /* WordprocessingML 2003 */
    kFlatOpc,      /* a package of Office Open XML as one XML file */
    kDocx,
    kXlsx,
    kPptx,
    kOpenDocument,     /* a package: .odt, .ods, .odp … */
    kFlatOpenDocument, /* the same as one XML file: .fodt … */
    kHtml,
    kRtf,
    kPlainText /* and CSV: whatever has no other format, where the job names a textFont */
};

/* Flags of a job. */
enum {
    kAllFormats = 1,     /* all of DocumentFormat, each read as its standard has it. Without it the
                            source counts as WordprocessingML 2003, and is read as ConvertFile does */
    kWriteBreaks = 2,    /* U+200B at the word boundaries of all Lao, in place of those there */
    kTakeBreaks = 4,     /* take out U+200B in all Lao */
    kDetectText = 8,     /* tell hearNote of text that reads as legacy Lao in a font that isn't one,
                            and of text that doesn't in a font that is one */
    kApplyDetected = 16, /* and convert the first, and leave the second as it is */
    kKeepFonts = 32,     /* no font is a legacy one: only breaks change */
    kWbrBreaks = 64,     /* in HTML, <wbr> in place of U+200B */
    kBreaksByOption = 128 /* breaks where the option "b" says, in place of word boundaries */
};

/* A conversion with what ConvertFile leaves to the library. Null or 0 where nothing is wanted. The
 * host owns all of it, and must not start another conversion in a callback. What stands behind
 * fontCount counts with kAllFormats alone; a host of an older library, whose record ends there,
 * gives the size of its own. */
typedef struct DocumentJob {
    DWORD size;         /* sizeof(DocumentJob), so that a later library knows which record it is */
    const char *source; /* UTF-8 path */
    const char *destination; /* UTF-8 path; null: nothing is written, the fonts are counted */
    const char *fontMap;     /* UTF-8 path of a file like FontList.ini */
    void *context;           /* the first argument of all callbacks */
    void(WINAPI *showPercent)(void *context, DWORD percent); /* hears rising percentages in place of
                                                                the meter */
    int(WINAPI *shallStop)(void *context); /* asked often; nonzero stops, and the old file stays */
    DocumentFont *fonts; /* receives the fonts of the text, in order of their first use */
    DWORD fontRoom;      /* how many have room; those that come later are left out */
    DWORD fontCount;     /* receives their number */
    DWORD flags;         /* of the enumeration above */
    DWORD format;        /* a DocumentFormat that the source shall be; receives what it is */
    const char
        *textFont; /* UTF-8: the font whose code a plain text is in, as for LegacyToUnicode */
    unsigned long long convertedCharacters; /* receives how many were in legacy fonts */
    unsigned long long changedParts; /* receives how many parts of the document changed; 0: the new
                                        one is the old one, byte for byte */
    void(WINAPI *hearNote)(void *context, const char *note); /* hears each note, UTF-8, in place of
                                                                the box with all of them */
} DocumentJob;

/* Does a job. Results and boxes as from ConvertFile. */
DWORD WINAPI ConvertDocument(DocumentJob *job);

#ifdef __cplusplus
}
#endif

#endif
