// The binary form field by field, without building anything: for dump, and to find out where an action ends and whether
// it is whole, which the library's reader does not say.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

struct BinaryField {
    std::size_t offset;
    std::size_t size;
    std::string meaning;
    bool opensRecord;  // the first field of a parameter
};

struct BinaryWalk {
    std::vector<BinaryField> fields;  // only when they were asked for
    std::size_t end = 0;              // of the action, or of its sound part
    std::string problem;              // why it stops there; "" if all is there
    bool sibling = false;             // the sibling product's, of which only the first word is known
};

BinaryWalk WalkBinary(std::string_view bytes, bool withFields);
