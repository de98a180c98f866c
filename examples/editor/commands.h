// Ids of the menu's commands: for the menu's table and for programs that drive the editor. A
// command's handler takes nothing, since the editor has one document.
#pragma once

enum Command {
    kOpenFile = 100,
    kSaveFile,
    kSaveFileAs,
    kConvertFile,
    kCloseEditor,
    kUndo,
    kSelectAll,
    kFindText,
    kReplaceText,
    kEditLine,
    kInsertMarks,
    kRemoveMarks,
    kShowMarks,
    kCheckSpelling,
    kSortLines,
    kDictionary,
    kViewFont,
    kOptions,
};

// Id of the edit control in the frame.
constexpr int kTextControl = 1;

void OpenFile();
void SaveFile();
void SaveFileAs();
void ConvertFiles();
void FindTextCommand();
void ReplaceTextCommand();
void EditLine();
void InsertMarks();
void RemoveMarks();
void ToggleMarks();
void CheckSpelling();
void SortLines();
void ShowDictionary();
void ChooseViewFont();
void ShowOptions();
