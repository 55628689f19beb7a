// The round of first_action.c in C++: makes an action, writes it, reads it back and compares.
#include <OrvActions.hpp>

#include <iostream>

int main()
{
    orv::Action action = orv::Action::Named("PanLeft");
    action.SetVideoInput(orv::Channel::Number(7));
    action.Set("Speed", 3);
    std::cout << action.TextUtf8() << '\n';
    return orv::Action::Parse(action.Text()) == action ? 0 : 1;
}
