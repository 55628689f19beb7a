// Defines a function of several families in one place.
//
//     ORV_EXPORT_TWIN(OrvBool, DuplicateHandle, (TOrvHandle handle), (handle))
//     {
//         ...
//     }
#pragma once

#define ORV_EXPORT_NAME(Family, Result, Name, Parameters, Arguments) \
    extern "C" Result Family##_##Name Parameters                     \
    {                                                                \
        return Name Arguments;                                       \
    }

// OrvAct_ and Talvec_Action_
#define ORV_EXPORT_TWIN(Result, Name, Parameters, Arguments)            \
    static Result Name Parameters;                                      \
    ORV_EXPORT_NAME(OrvAct, Result, Name, Parameters, Arguments)        \
    ORV_EXPORT_NAME(Talvec_Action, Result, Name, Parameters, Arguments) \
    static Result Name Parameters

// OrvMatchAct_ and TalvecMatchAct_
#define ORV_EXPORT_MATCH_TWIN(Result, Name, Parameters, Arguments)       \
    static Result Name Parameters;                                       \
    ORV_EXPORT_NAME(OrvMatchAct, Result, Name, Parameters, Arguments)    \
    ORV_EXPORT_NAME(TalvecMatchAct, Result, Name, Parameters, Arguments) \
    static Result Name Parameters

// Talvec_Action_ and TalvecMatchAct_
#define ORV_EXPORT_TALVEC_TWIN(Result, Name, Parameters, Arguments)      \
    static Result Name Parameters;                                       \
    ORV_EXPORT_NAME(Talvec_Action, Result, Name, Parameters, Arguments)  \
    ORV_EXPORT_NAME(TalvecMatchAct, Result, Name, Parameters, Arguments) \
    static Result Name Parameters

// All four
#define ORV_EXPORT_EVERY_TWIN(Result, Name, Parameters, Arguments)       \
    static Result Name Parameters;                                       \
    ORV_EXPORT_NAME(OrvAct, Result, Name, Parameters, Arguments)         \
    ORV_EXPORT_NAME(Talvec_Action, Result, Name, Parameters, Arguments)  \
    ORV_EXPORT_NAME(OrvMatchAct, Result, Name, Parameters, Arguments)    \
    ORV_EXPORT_NAME(TalvecMatchAct, Result, Name, Parameters, Arguments) \
    static Result Name Parameters
