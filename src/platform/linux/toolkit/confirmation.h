#pragma once

#include <string>

namespace velmo {

/// Something that is done only once the user has said so.
struct Confirmation {
    std::string question;
    /// What will happen, below the question.
    std::string consequence;
    /// On the button that agrees.
    std::string action;
};

}  // namespace velmo
