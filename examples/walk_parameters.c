/* Walks over the parameters of an action and over those that the catalogue declares for it: the interfaces in C. */
#include <OrvActions.h>
#include <stdio.h>

/* Prints the ASCII characters of a wide text; names in the catalogue have no others. */
static void PrintName(const OrvWChar* name)
{
    for (; *name; ++name) putchar(*name < 128 ? (char)*name : '?');
}

/* A record of ours that the library calls: it begins with the interface, and the rest is what we want to know. */
typedef struct Walk {
    ITalvecParameterEnumerator base;
    ITalvecAction* action;
    uint32_t count;
} Walk;

static void OnParameter(ITalvecParameterEnumerator* self, const OrvWChar* name, uint32_t kind, uint32_t enumType)
{
    Walk* walk = (Walk*)self;
    int64_t number = 0;
    (void)enumType;
    ++walk->count;
    printf("  ");
    PrintName(name);
    if (kind == ORV_KIND_MediaChannel) {
        TOrvChannelValue channel = {0, NULL, 0};
        walk->action->table->GetMediaChannel(walk->action, name, &channel);
        printf(": channel %u\n", (unsigned)channel.number);
    } else if (walk->action->table->GetInt64(walk->action, name, &number)) {
        printf(": %ld\n", (long)number);
    }
}

typedef struct Declared {
    ITalvecParameterSink base;
    uint32_t count;
} Declared;

static void OnDeclared(ITalvecParameterSink* self, const TTalvecParameterPlainInfo* record)
{
    (void)record;
    ++((Declared*)self)->count;
}

static const ITalvecParameterEnumeratorTable walkTable = {NULL, NULL, NULL, OnParameter};
static const ITalvecParameterSinkTable declaredTable = {NULL, NULL, NULL, OnDeclared};

int main(void)
{
    const TOrvHandle handle = OrvAct_CreateFromTextBufferA("CameraAreaZoom (Camera: 7, X: 1, Y: 2)",
                                                           ORV_LENGTH_TERMINATED, ORV_EXPECT_ANY, 1, NULL);
    ITalvecAction* action = Talvec_Action_ConvertToIOrvAction(handle);
    Walk walk = {{&walkTable}, action, 0};
    Declared declared = {{&declaredTable}, 0};
    uint32_t code;
    uint32_t carried;
    if (!action) return 1;
    PrintName(action->table->GetActionName(action));
    puts("");
    action->table->EnumerateParameters(action, &walk.base);

    carried = action->table->GetParameterCount(action);
    code = action->table->GetActionCode(action);
    if (!Talvec_Action_EnumerateActionParametersInterface(&declared.base, code)) return 1;
    printf("%u of %u declared parameters\n", (unsigned)carried, (unsigned)declared.count);

    action->table->Release(action); /* the handle is the same reference */
    return walk.count == carried && OrvAct_GetNumberOfOpenHandles() == 0 ? 0 : 1;
}
