#include "platform/expression_locale.h"

#include <boost/regex.hpp>
#include <locale>
#include <stdexcept>

namespace Platform {

namespace {

// Not the user's locale: which texts an action's grammar admits must not depend on who is logged in.
std::locale AllLetters()
{
    try {
        return std::locale("C.UTF-8");
    } catch (const std::runtime_error&) {
        return std::locale::classic();  // a system without it knows the letters of ASCII only
    }
}

}  // namespace

void ImbueExpressionLocale(boost::wregex& expression)
{
    expression.imbue(AllLetters());
}

}  // namespace Platform
