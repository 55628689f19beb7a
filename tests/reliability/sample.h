// Objects and records to call operations with, and what can be seen of the answers. A caller's view: the public header
// alone.
#pragma once

#include <OrvActions.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Sample {

// A call is made a few times with different inputs.
struct Case {
    std::string_view function;  // as exported, or as the interface names it
    unsigned variant;
};

constexpr unsigned kSubjects = 4;
constexpr unsigned kKinds = 12;
unsigned Variants(std::string_view function);  // how many inputs it is called with

// A new object: an action of the catalogue with its parameters set, a match action and an action of no catalogue that
// hold every kind, a generic action.
TOrvHandle MakeSubject(const Case& test);
void SetEveryParameter(TOrvHandle object);

// Everything that can be seen of an object, without changing it.
std::string StateOf(TOrvHandle object);
// Ends all references to an object and tells how many there were.
std::uint32_t CloseAll(TOrvHandle object);

const char16_t* Text(const Case& test, unsigned place);  // a text argument
const char* NarrowText(const Case& test, unsigned place);
std::uint64_t Number(const Case& test, unsigned place, unsigned width);

const std::vector<char>& Image();  // a binary form
const TOrvEventData& EventRecord();
TOrvParameterValue ParameterValue(unsigned kind);

// What callbacks and sinks of ours were told, as a number; they allocate nothing.
extern std::uint64_t told;
void Tell(const OrvWChar* text);
void Tell(std::uint64_t number);

void Describe(std::string& answer, const OrvWChar* text);
void Describe(std::string& answer, const char* text);
void Describe(std::string& answer, const TOrvChannelValue& value);
void Describe(std::string& answer, const TOrvEventTypeValue& value);
void Describe(std::string& answer, const TOrvResourceValue& value);
void Describe(std::string& answer, const TOrvResultDataItem& value);
void Describe(std::string& answer, const TOrvParameterValue& value);
void Describe(std::string& answer, const TOrvEventData& value);
void DescribeBytes(std::string& answer, const void* bytes, std::size_t size);

}  // namespace Sample
