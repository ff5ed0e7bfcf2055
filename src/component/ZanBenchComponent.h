#pragma once

/* The binary interface of ZanBench for programs in C, and for every language that can call C.
 *
 * An object is a handle: a number, never used again once its object is gone, which is looked up at every call. What
 * no living object has, a null pointer, an unknown id, or a call from a thread other than the user interface's is
 * answered with an error number, and what the text of an argument holds is checked before it is used.
 *
 * Every function that gives a ZanResult gives 0, or the number of the run-time error that ended the call; the words are at
 * zanErrorDescription(). No C++ exception leaves. Names of members ignore case. Texts are UTF-8 and end with a zero
 * byte. All calls belong to the thread that made the application object, but for those that say "any thread".
 */

#include <stddef.h>
#include <stdint.h>

#if defined(__GNUC__)
#define ZAN_EXPORT __attribute__((visibility("default")))
#else
#define ZAN_EXPORT
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Counts up whenever something of this file changes its meaning. */
#define ZAN_INTERFACE_VERSION 1

/* 0, one of the numbers below, or the number of a run-time error of the platform (91, 438, ...). */
typedef int32_t ZanResult;

enum ZanError {
    ZAN_OK = 0,
    ZAN_E_POINTER = 61001,     /* a null pointer where something is due */
    ZAN_E_HANDLE = 61002,      /* no living object has this handle */
    ZAN_E_CLASS = 61003,       /* there is no class of this id */
    ZAN_E_INTERFACE = 61004,   /* the object does not have this interface */
    ZAN_E_THREAD = 61005,      /* not the user interface's thread */
    ZAN_E_APPLICATION = 61006, /* there is no application object, or none can be made: see zanStart */
    ZAN_E_VARIANT = 61007,     /* a value of a kind that cannot be passed, or a text that is not UTF-8 */
    ZAN_E_ALIVE = 61008,       /* there are living objects */
    ZAN_E_REGISTRY = 61009     /* the registry file cannot be read or written */
};

/* 16 bytes in the order in which the id is written. */
typedef struct ZanId
{
    uint8_t bytes[16];
} ZanId;

/* clang-format off */
/* The initializer of an id. */
#define ZAN_ID(...) {{__VA_ARGS__}}

/* Classes. */
#define ZAN_CLASS_BENCHWINDOW \
    ZAN_ID(0xb5, 0x75, 0xfc, 0x18, 0x72, 0x7e, 0x4e, 0xba, 0x99, 0x2e, 0xb3, 0x49, 0xce, 0x86, 0xf0, 0xa0)
#define ZAN_CLASS_SITEMAP \
    ZAN_ID(0x3b, 0xf4, 0xec, 0x28, 0xe6, 0x3b, 0x4d, 0x16, 0x87, 0x09, 0x24, 0x42, 0x3d, 0x49, 0x97, 0x73)
#define ZAN_CLASS_STATUSLIGHT \
    ZAN_ID(0xc6, 0xdb, 0x2a, 0xcd, 0x9a, 0xaf, 0x40, 0xad, 0x9e, 0x77, 0xf8, 0x77, 0x76, 0xe2, 0x54, 0x63)
#define ZAN_CLASS_VALUEBAR \
    ZAN_ID(0x79, 0x2e, 0xd4, 0xf6, 0x73, 0xce, 0x44, 0x82, 0xbe, 0x8c, 0xe7, 0xa1, 0x4e, 0xa8, 0x3f, 0x60)
/* A scheme file with its logger: what a panel's Logger is set to. */
#define ZAN_CLASS_SITE \
    ZAN_ID(0x52, 0xeb, 0xbf, 0x8a, 0x16, 0x96, 0x41, 0xee, 0xa2, 0x1c, 0x61, 0xef, 0x7f, 0x39, 0xf9, 0xa9)
/* Design values of a control, by name and in the order in which they were written. */
#define ZAN_CLASS_PROPERTYBAG \
    ZAN_ID(0xee, 0x88, 0xc7, 0x47, 0xbc, 0xc3, 0x40, 0x55, 0x9a, 0x10, 0x76, 0xcd, 0x5f, 0x7a, 0xa2, 0x38)

/* Interfaces. Every object has the dispatch interface: its members by name. A class object has the factory too. */
#define ZAN_INTERFACE_FACTORY \
    ZAN_ID(0x69, 0x45, 0xe0, 0xf2, 0x76, 0x5f, 0x47, 0xe7, 0x84, 0x7e, 0x9f, 0xf3, 0x99, 0x76, 0xa3, 0x9d)
#define ZAN_INTERFACE_DISPATCH \
    ZAN_ID(0xf0, 0xbd, 0xd1, 0x8a, 0x93, 0x81, 0x46, 0x42, 0x85, 0x55, 0x27, 0xc5, 0xd1, 0xc7, 0x0f, 0x04)
/* The window that a created control stands in, an object of its own: Title, Width, Visible, SavePicture, ... */
#define ZAN_INTERFACE_FRAME \
    ZAN_ID(0x9c, 0xae, 0xa9, 0x94, 0xa1, 0x25, 0x40, 0x52, 0xb6, 0xf0, 0x91, 0x5b, 0x95, 0x12, 0x46, 0x11)
/* clang-format on */

/* Names a living object; 0 names none. Whoever is given a handle as a result owns one reference of it. */
typedef uint64_t ZanHandle;

/* What a variant holds; the numbers are the classic type codes. */
enum ZanKind {
    ZAN_EMPTY = 0,
    ZAN_NULL = 1,
    ZAN_INTEGER = 2, /* 16 bits */
    ZAN_LONG = 3,    /* 32 bits */
    ZAN_SINGLE = 4,
    ZAN_DOUBLE = 5,
    ZAN_CURRENCY = 6, /* value times 10,000 */
    ZAN_DATE = 7,     /* days since 1899-12-30 */
    ZAN_TEXT = 8,
    ZAN_OBJECT = 9, /* a handle; 0 is Nothing */
    ZAN_ERROR = 10,
    ZAN_BOOLEAN = 11,
    ZAN_BYTE = 17
};

/* Length of a text that goes up to its zero byte. */
#define ZAN_TO_ZERO (-1)
/* The error code that stands for an argument left out. */
#define ZAN_MISSING ((int32_t)0x80020004u)

/* A value. Texts and objects of a result belong to the caller, who gives them back with zanClear(); those of an
 * argument stay the caller's, those that an event brings are only lent. */
typedef struct ZanVariant
{
    uint16_t kind;
    uint16_t reserved; /* 0 */
    int32_t length;    /* of a text: bytes without the zero byte, or ZAN_TO_ZERO */
    union {
        int16_t boolean; /* 0 or -1; any other number counts as -1 */
        uint8_t byte;
        int16_t integer;
        int32_t long_integer;
        float single;
        double real; /* also of a date */
        int64_t currency;
        int32_t error;
        const char* text;
        ZanHandle object;
    } as;
} ZanVariant;

/* What a call wants of a member. */
enum ZanAccess {
    ZAN_GET = 0,          /* read a property or call a method; the arguments are its indices or arguments */
    ZAN_PUT = 1,          /* assign a value to a property; the last argument is the value */
    ZAN_PUT_REFERENCE = 2 /* assign an object to a property; the last argument is the object */
};

/* An event of an object. The arguments are lent for the length of the call. The receiver may call whatever it likes,
 * zanRelease of the source included. */
typedef void (*ZanEvent)(void* context, ZanHandle source, const char* event, const ZanVariant* arguments,
                         int32_t count);

/* ---- The four standard entry points -------------------------------------------------------------------------- */

/* The class object of a class, by its factory or dispatch interface. */
ZAN_EXPORT ZanResult DllGetClassObject(const ZanId* class_id, const ZanId* interface_id, ZanHandle* factory);
/* 0 when the library can be unloaded: no object, no lock and no application object of it is left. Otherwise 1. Any
 * thread. */
ZAN_EXPORT int32_t DllCanUnloadNow(void);
/* Enters the classes into the registry file of the user, or takes out those that this very library has entered. What
 * others have entered stays as it is. Any thread. */
ZAN_EXPORT ZanResult DllRegisterServer(void);
ZAN_EXPORT ZanResult DllUnregisterServer(void);

/* ---- The application object ---------------------------------------------------------------------------------- */

enum ZanStart {
    ZAN_DESKTOP = 0,  /* windows on the user's display */
    ZAN_OFFSCREEN = 1 /* no display is needed or used; boxes are answered at once, see the frame's Unattended */
};

/* Uses the application object of the process, or makes one where there is none; the thread of the call is the user
 * interface's then. Each call that succeeds is answered by one zanEnd(). */
ZAN_EXPORT ZanResult zanStart(int32_t how);
/* The last one ends the application object that zanStart() made; 61008 while objects are alive. */
ZAN_EXPORT ZanResult zanEnd(void);
/* Lets windows live for so many milliseconds; 0 does what waits to be done and returns. */
ZAN_EXPORT ZanResult zanProcessEvents(int32_t milliseconds);
/* Ends the zanProcessEvents() that is under way, from an event. */
ZAN_EXPORT ZanResult zanStopEvents(void);

/* ---- Objects -------------------------------------------------------------------------------------------------- */

ZAN_EXPORT ZanResult zanCreateInstance(ZanHandle factory, const ZanId* interface_id, ZanHandle* object);
/* The same object by another interface, with a reference of its own. */
ZAN_EXPORT ZanResult zanQueryInterface(ZanHandle object, const ZanId* interface_id, ZanHandle* result);
ZAN_EXPORT ZanResult zanRetain(ZanHandle object);
/* Lets a reference go; the last one ends the object, or as soon as a call of it that is under way has returned. */
ZAN_EXPORT ZanResult zanRelease(ZanHandle object);
/* Keeps the library from being unloaded, or no longer. Any thread. */
ZAN_EXPORT ZanResult zanLockServer(int32_t lock);

/* Reaches a member by name; an empty name is the default member. `result` may be null. */
ZAN_EXPORT ZanResult zanInvoke(ZanHandle object, const char* member, int32_t access, const ZanVariant* arguments,
                               int32_t count, ZanVariant* result);
/* The common two: a property without indices. */
ZAN_EXPORT ZanResult zanGet(ZanHandle object, const char* member, ZanVariant* result);
ZAN_EXPORT ZanResult zanPut(ZanHandle object, const char* member, const ZanVariant* value);

/* Has the events of an object told until `subscription` is released or the object is gone. */
ZAN_EXPORT ZanResult zanSubscribe(ZanHandle object, ZanEvent receiver, void* context, ZanHandle* subscription);

/* Gives the text or the object of a result back and empties it. Any thread for texts. */
ZAN_EXPORT ZanResult zanClear(ZanVariant* value);

/* ---- What there is -------------------------------------------------------------------------------------------- */

/* The id of a class by its name. Any thread. */
ZAN_EXPORT ZanResult zanClassId(const char* name, ZanId* class_id);
/* The type library, a JSON text: classes, members, kinds, types, defaults, events. */
ZAN_EXPORT ZanResult zanTypeLibrary(ZanVariant* text);
/* ZAN_INTERFACE_VERSION of the library that is loaded. Any thread. */
ZAN_EXPORT int32_t zanInterfaceVersion(void);

/* Number and words of the call that failed last on this thread; 0 and "" when none has. The text stays until the next
 * failure. Any thread. */
ZAN_EXPORT ZanResult zanErrorNumber(void);
ZAN_EXPORT const char* zanErrorDescription(void);

#ifdef __cplusplus
}
#endif
