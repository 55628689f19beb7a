/* Makes an action, writes it, reads it back and compares: the round that most callers make. */
#include <OrvActions.h>
#include <stdio.h>

int main(void)
{
    const TOrvChannelValue camera = {0, NULL, 7}; /* camera number 7 */
    const TOrvHandle action = OrvAct_CreatePanLeft(&camera, 3);
    char text[200];
    OrvBool same = 0;
    if (!action || !OrvAct_StoreToTextBufferA(action, text, sizeof text, 0, 1, NULL)) return 1;
    puts(text);

    const TOrvHandle copy = OrvAct_CreateFromTextBufferA(text, ORV_LENGTH_TERMINATED, ORV_EXPECT_ANY, 1, NULL);
    if (!copy || !OrvAct_Equal(action, copy, &same)) return 1;
    puts(same ? "reads back the same" : "reads back differently");

    OrvAct_CloseHandle(copy);
    OrvAct_CloseHandle(action);
    return OrvAct_GetNumberOfOpenHandles() == 0 && same ? 0 : 1;
}
