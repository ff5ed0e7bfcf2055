/* A program that loads the library by its file name and closes it again, several times over, as a program with plugins
 * does. The library stays in memory on purpose: the toolkit keeps pointers into it. What must hold is that it tells the
 * truth about being in use, and that it works whenever it is opened again.
 *
 *     component_reload LIBRARY SCHEME
 */
#include "component/ZanBenchComponent.h"

#include <dlfcn.h>
#include <pthread.h>
#include <stdio.h>
#include <string.h>

#define ROUNDS 5

static int failures = 0;

#define CHECK(condition)                                                                                           \
    do {                                                                                                           \
        if (!(condition)) {                                                                                        \
            fprintf(stderr, "line %d: %s does not hold (%s)\n", __LINE__, #condition,                              \
                    description ? description() : "");                                                             \
            ++failures;                                                                                            \
        }                                                                                                          \
    } while (0)

/* What a program looks up in the library. */
static ZanResult (*get_class_object)(const ZanId*, const ZanId*, ZanHandle*);
static int32_t (*can_unload)(void);
static ZanResult (*start)(int32_t);
static ZanResult (*end)(void);
static ZanResult (*create)(ZanHandle, const ZanId*, ZanHandle*);
static ZanResult (*release)(ZanHandle);
static ZanResult (*lock)(int32_t);
static ZanResult (*put)(ZanHandle, const char*, const ZanVariant*);
static ZanResult (*get)(ZanHandle, const char*, ZanVariant*);
static ZanResult (*invoke)(ZanHandle, const char*, int32_t, const ZanVariant*, int32_t, ZanVariant*);
static ZanResult (*subscribe)(ZanHandle, ZanEvent, void*, ZanHandle*);
static ZanResult (*process)(int32_t);
static const char* (*description)(void);

static const ZanId panel_class = ZAN_CLASS_BENCHWINDOW, site_class = ZAN_CLASS_SITE;
static const ZanId factory_interface = ZAN_INTERFACE_FACTORY, dispatch_interface = ZAN_INTERFACE_DISPATCH;

/* ISO C knows no way from an object pointer to a function pointer. */
static void look_up(void* library, const char* name, void* place)
{
    void* const symbol = dlsym(library, name);
    if (!symbol) {
        fprintf(stderr, "%s: %s\n", name, dlerror());
        ++failures;
    }
    memcpy(place, &symbol, sizeof symbol);
}

static void look_up_all(void* library)
{
    look_up(library, "DllGetClassObject", &get_class_object);
    look_up(library, "DllCanUnloadNow", &can_unload);
    look_up(library, "zanStart", &start);
    look_up(library, "zanEnd", &end);
    look_up(library, "zanCreateInstance", &create);
    look_up(library, "zanRelease", &release);
    look_up(library, "zanLockServer", &lock);
    look_up(library, "zanPut", &put);
    look_up(library, "zanGet", &get);
    look_up(library, "zanInvoke", &invoke);
    look_up(library, "zanSubscribe", &subscribe);
    look_up(library, "zanProcessEvents", &process);
    look_up(library, "zanErrorDescription", &description);
}

static void hear(void* context, ZanHandle source, const char* name, const ZanVariant* arguments, int32_t count)
{
    (void)source;
    (void)name;
    (void)arguments;
    (void)count;
    ++*(int*)context;
    CHECK(can_unload() == 1); /* a call of the library is under way */
}

static ZanVariant text(const char* content)
{
    ZanVariant value;
    memset(&value, 0, sizeof value);
    value.kind = ZAN_TEXT;
    value.length = ZAN_TO_ZERO;
    value.as.text = content;
    return value;
}

static ZanHandle created(const ZanId* id)
{
    ZanHandle factory = 0, object = 0;
    CHECK(get_class_object(id, &factory_interface, &factory) == ZAN_OK);
    CHECK(create(factory, &dispatch_interface, &object) == ZAN_OK);
    CHECK(release(factory) == ZAN_OK);
    return object;
}

/* What keeps the library in use, one thing after the other. */
static void check_truth(void)
{
    ZanHandle factory = 0;
    CHECK(can_unload() == 0);
    CHECK(lock(1) == ZAN_OK);
    CHECK(can_unload() == 1);
    CHECK(lock(0) == ZAN_OK);
    CHECK(can_unload() == 0);
    CHECK(start(ZAN_OFFSCREEN) == ZAN_OK);
    CHECK(can_unload() == 1); /* the application object is the library's */
    CHECK(get_class_object(&panel_class, &factory_interface, &factory) == ZAN_OK);
    CHECK(end() == ZAN_E_ALIVE);
    CHECK(release(factory) == ZAN_OK);
    CHECK(end() == ZAN_OK);
    CHECK(can_unload() == 0);
}

static void show_panel(const char* scheme)
{
    ZanVariant argument = text(scheme), logger;
    ZanHandle events = 0;
    int heard = 0;
    CHECK(start(ZAN_OFFSCREEN) == ZAN_OK);
    const ZanHandle site = created(&site_class), panel = created(&panel_class);
    CHECK(invoke(site, "Open", ZAN_GET, &argument, 1, NULL) == ZAN_OK);
    CHECK(get(site, "Logger", &logger) == ZAN_OK);
    CHECK(put(panel, "Logger", &logger) == ZAN_OK);
    CHECK(release(logger.as.object) == ZAN_OK);
    CHECK(subscribe(panel, hear, &heard, &events) == ZAN_OK);
    argument = text("Overview");
    CHECK(invoke(panel, "LoadWindow", ZAN_GET, &argument, 1, NULL) == ZAN_OK);
    CHECK(process(0) == ZAN_OK);
    CHECK(heard > 0);
    CHECK(release(panel) == ZAN_OK);
    CHECK(release(site) == ZAN_OK);
    CHECK(can_unload() == 1); /* the subscription */
    CHECK(release(events) == ZAN_OK);
    CHECK(end() == ZAN_OK);
    CHECK(can_unload() == 0);
}

/* A thread that has failed a call, and ends after the library was closed. */
struct Waiting
{
    pthread_mutex_t mutex;
    pthread_cond_t changed;
    int step; /* 1 has called, 2 may end */
};

static void* call_from_thread(void* shared)
{
    struct Waiting* const waiting = shared;
    const ZanResult result = release(77);
    pthread_mutex_lock(&waiting->mutex);
    CHECK(result == ZAN_E_APPLICATION || result == ZAN_E_THREAD);
    waiting->step = 1;
    pthread_cond_broadcast(&waiting->changed);
    while (waiting->step != 2)
        pthread_cond_wait(&waiting->changed, &waiting->mutex);
    pthread_mutex_unlock(&waiting->mutex);
    return NULL;
}

static void begin_thread(struct Waiting* waiting, pthread_t* thread)
{
    pthread_mutex_init(&waiting->mutex, NULL);
    pthread_cond_init(&waiting->changed, NULL);
    waiting->step = 0;
    CHECK(pthread_create(thread, NULL, call_from_thread, waiting) == 0);
    pthread_mutex_lock(&waiting->mutex);
    while (waiting->step != 1)
        pthread_cond_wait(&waiting->changed, &waiting->mutex);
    pthread_mutex_unlock(&waiting->mutex);
}

static void end_thread(struct Waiting* waiting, pthread_t thread)
{
    pthread_mutex_lock(&waiting->mutex);
    waiting->step = 2;
    pthread_cond_broadcast(&waiting->changed);
    pthread_mutex_unlock(&waiting->mutex);
    pthread_join(thread, NULL);
    pthread_cond_destroy(&waiting->changed);
    pthread_mutex_destroy(&waiting->mutex);
}

int main(int argc, char** argv)
{
    if (argc < 3)
        return 2;
    for (int round = 0; round < ROUNDS && failures == 0; ++round) {
        struct Waiting waiting;
        pthread_t thread;
        void* const library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
        if (!library) {
            fprintf(stderr, "%s\n", dlerror());
            return 1;
        }
        look_up_all(library);
        if (failures)
            return 1;
        check_truth();
        show_panel(argv[2]);
        begin_thread(&waiting, &thread);
        CHECK(can_unload() == 0);
        CHECK(dlclose(library) == 0);
        end_thread(&waiting, thread);
        /* Still there, as documented; this does not load it anew. */
        void* const resident = dlopen(argv[1], RTLD_NOW | RTLD_NOLOAD);
        CHECK(resident != NULL);
        if (resident)
            dlclose(resident);
    }
    return failures ? 1 : 0;
}
