// Which characters are letters, digits and blanks for the pattern engine.
#pragma once

#include <boost/regex_fwd.hpp>

namespace Platform {

// Makes the classes of an expression know the letters of all languages. To be called before the expression gets its
// pattern.
void ImbueExpressionLocale(boost::wregex& expression);

}  // namespace Platform
