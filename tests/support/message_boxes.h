// Message boxes in tests: nobody is there to answer them, and one that no test expects is a fault.
#ifndef ORVEL_TESTS_MESSAGE_BOXES_H
#define ORVEL_TESTS_MESSAGE_BOXES_H

#include <string>
#include <vector>

#include "runtime.h"

struct ShownBox {
    HWND owner;
    std::string text, caption;
    UINT flags;  // those of kBoxFlagsTold
};

// For the length of its life exactly these boxes must come, in this order: each "caption: text"
// must contain its piece. Answers are handed out in order; where there is none, the first button's.
// May stand inside another one, whose boxes then wait.
struct ExpectBoxes {
    explicit ExpectBoxes(std::vector<std::string> expected, std::vector<int> given = {});
    ~ExpectBoxes();
    ExpectBoxes(const ExpectBoxes &) = delete;

    std::vector<std::string> captions() const;  // of the boxes that came so far

    std::vector<std::string> pieces;
    std::vector<int> answers;
    std::vector<ShownBox> shown;
    ExpectBoxes *outer;
};

#endif
