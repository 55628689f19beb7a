#include "ulmo/type_name.h"

#include <gtest/gtest.h>

namespace Sample {
struct Named {};
namespace Inner {
template <class T>
struct Holder {};
}  // namespace Inner
}  // namespace Sample

namespace {

TEST(TypeName, IsReadable)
{
    EXPECT_EQ(Ulmo::TypeName(typeid(Sample::Named)), "Sample::Named");
    EXPECT_EQ(Ulmo::TypeName(typeid(Sample::Inner::Holder<int>)), "Sample::Inner::Holder<int>");
}

}  // namespace
