#include "expressions_alone.h"

#include "forms/expression.h"
#include "forms/text_patterns.h"

namespace OrvBench {

std::size_t CountMatches(std::u16string_view text)
{
    static const OrvPLC::TextPatterns& patterns = (OrvPLC::StartTextPatterns(), OrvPLC::Patterns());
    OrvPLC::PatternSearch search(text.size());
    std::size_t matches = search.Find(patterns.header, text);
    text = search.Rest();
    for (; search.Find(patterns.parameter, text); ++matches) text = search.Rest();
    return matches + search.Find(patterns.close, text);
}

}  // namespace OrvBench
