// A type of its own, which nobody else can name.
[[noreturn]] void RaiseForeign()
{
    struct Unknown {};
    throw Unknown();
}
