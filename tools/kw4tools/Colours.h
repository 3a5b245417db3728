#pragma once

#include <string>
#include <string_view>

// Colours for those who read: on terminals alone, and not when NO_COLOR is set and not empty or the
// terminal says that it is a dumb one.
//
//     const Colours colours(STDOUT_FILENO);
//     std::cout << colours.Good("found") << '\n';
class Colours
{
public:
    // For what is written to that descriptor.
    explicit Colours(int iDescriptor);

    // The text, in the colour of what is as it should be, of what is worth a look, of what failed.
    std::string Good(std::string_view iText) const { return Painted("32", iText); }
    std::string Doubtful(std::string_view iText) const { return Painted("33", iText); }
    std::string Bad(std::string_view iText) const { return Painted("31", iText); }

private:
    std::string Painted(std::string_view iColour, std::string_view iText) const;

    bool _On;
};
