/* The version of this header, for the preprocessor. Part of OrvActions.h; may be included alone.
 *
 *     #if ORV_ACTIONS_VERSION >= ORV_ACTIONS_VERSION_OF(143, 0, 0)
 *
 * The first number is the version of the interface, which OrvAct_InterfaceVersion gives of the library that a program
 * runs with. The build takes all three from here. */
#ifndef ORV_VERSION_H
#define ORV_VERSION_H

#define ORV_ACTIONS_VERSION_MAJOR 143
#define ORV_ACTIONS_VERSION_MINOR 0
#define ORV_ACTIONS_VERSION_PATCH 0
#define ORV_ACTIONS_VERSION_TEXT "143.0.0"

/* A version as one number, which grows with it; minor and patch are below 1000. */
#define ORV_ACTIONS_VERSION_OF(major, minor, patch) ((major)*1000000L + (minor)*1000L + (patch))
#define ORV_ACTIONS_VERSION \
    ORV_ACTIONS_VERSION_OF(ORV_ACTIONS_VERSION_MAJOR, ORV_ACTIONS_VERSION_MINOR, ORV_ACTIONS_VERSION_PATCH)

#endif
