/* A host in C: shows a window of a scheme, waits for live data, changes the look of the panel, and lets go.
 *
 *     panel_in_c SCHEME WINDOW [PICTURE.png]
 *
 * With QT_QPA_PLATFORM=offscreen it needs no display. Pictures that a panel names without a folder are looked for in
 * the folder that the program stands in.
 */

#include "component/ZanBenchComponent.h"

#include <stdio.h>
#include <string.h>

static const ZanId PanelClass = ZAN_CLASS_BENCHWINDOW;
static const ZanId SiteClass = ZAN_CLASS_SITE;
static const ZanId Factory = ZAN_INTERFACE_FACTORY;
static const ZanId Dispatch = ZAN_INTERFACE_DISPATCH;
static const ZanId Frame = ZAN_INTERFACE_FRAME;

struct Heard
{
    int data;
    int properties;
};

static ZanVariant ofText(const char* text)
{
    ZanVariant value = {0};
    value.kind = ZAN_TEXT;
    value.length = ZAN_TO_ZERO;
    value.as.text = text;
    return value;
}

static ZanVariant ofNumber(int32_t number)
{
    ZanVariant value = {0};
    value.kind = ZAN_LONG;
    value.as.long_integer = number;
    return value;
}

static ZanVariant ofFlag(int flag)
{
    ZanVariant value = {0};
    value.kind = ZAN_BOOLEAN;
    value.as.boolean = flag ? -1 : 0;
    return value;
}

/* Prints why a call failed; 1 when it did. */
static int failed(ZanResult result, const char* what)
{
    if (result)
        fprintf(stderr, "%s: error %d: %s\n", what, (int)result, zanErrorDescription());
    return result != ZAN_OK;
}

static ZanHandle create(const ZanId* id)
{
    ZanHandle factory = 0;
    ZanHandle object = 0;
    if (failed(DllGetClassObject(id, &Factory, &factory), "class"))
        return 0;
    failed(zanCreateInstance(factory, &Dispatch, &object), "object");
    zanRelease(factory);
    return object;
}

static void onLoggerEvent(void* context, ZanHandle source, const char* event, const ZanVariant* arguments,
                          int32_t count)
{
    struct Heard* heard = context;
    (void)source;
    (void)arguments;
    (void)count;
    if (strcmp(event, "NewBenchData") == 0) {
        ++heard->data;
        zanStopEvents();
    }
}

static void onPanelEvent(void* context, ZanHandle source, const char* event, const ZanVariant* arguments,
                         int32_t count)
{
    struct Heard* heard = context;
    (void)source;
    if (strcmp(event, "PropertyChanged") == 0 && count == 1 && strcmp(arguments[0].as.text, "GridSize") == 0)
        ++heard->properties;
}

static int openSite(ZanHandle site, const char* scheme)
{
    const ZanVariant file = ofText(scheme);
    return failed(zanInvoke(site, "Open", ZAN_GET, &file, 1, NULL), scheme);
}

/* Gives the panel the site's logger, hears of its data, and loads the window. */
static int load(ZanHandle panel, ZanHandle site, const char* window, struct Heard* heard, ZanHandle* subscription)
{
    ZanVariant logger = {0};
    const ZanVariant key = ofText(window);
    const ZanVariant noMap = ofFlag(0);
    int bad = failed(zanGet(site, "Logger", &logger), "Logger");
    bad = bad || failed(zanPut(panel, "ShowSiteMap", &noMap), "ShowSiteMap");
    bad = bad || failed(zanPut(panel, "Logger", &logger), "Logger");
    bad = bad || failed(zanSubscribe(logger.as.object, onLoggerEvent, heard, subscription), "events");
    bad = bad || failed(zanInvoke(panel, "LoadWindow", ZAN_GET, &key, 1, NULL), window);
    zanClear(&logger);
    return bad;
}

/* Connects and waits for the first values. */
static int connectSite(ZanHandle site, const struct Heard* heard)
{
    if (failed(zanInvoke(site, "Connect", ZAN_GET, NULL, 0, NULL), "Connect"))
        return 1;
    failed(zanProcessEvents(20000), "events");
    if (heard->data == 0)
        fprintf(stderr, "no data has come\n");
    return heard->data == 0;
}

/* Writes a property, hears of it, and reads it back. */
static int changeGrid(ZanHandle panel, struct Heard* heard)
{
    const ZanVariant size = ofNumber(300);
    ZanVariant now = {0};
    ZanHandle subscription = 0;
    int bad = failed(zanSubscribe(panel, onPanelEvent, heard, &subscription), "events");
    bad = bad || failed(zanPut(panel, "GridSize", &size), "GridSize");
    bad = bad || failed(zanGet(panel, "gridsize", &now), "gridsize");
    zanRelease(subscription);
    if (bad || now.kind != ZAN_SINGLE || now.as.single != 300.0f || heard->properties != 1) {
        fprintf(stderr, "the grid is not what it was set to\n");
        return 1;
    }
    printf("grid %g twips\n", (double)now.as.single);
    return 0;
}

/* Values that are made up are never shown without saying so. */
static const char* titleFor(ZanHandle site)
{
    ZanVariant simulated = {0};
    const int isReal = zanGet(site, "IsSimulated", &simulated) == ZAN_OK && !simulated.as.boolean;
    return isReal ? "A panel in C" : "A panel in C (simulated logger)";
}

static int show(ZanHandle panel, const char* titleText, const char* picture)
{
    ZanHandle frame = 0;
    const ZanVariant title = ofText(titleText);
    const ZanVariant visible = ofFlag(1);
    int bad = failed(zanQueryInterface(panel, &Frame, &frame), "frame");
    bad = bad || failed(zanPut(frame, "Title", &title), "Title");
    bad = bad || failed(zanInvoke(frame, "Fit", ZAN_GET, NULL, 0, NULL), "Fit");
    bad = bad || failed(zanPut(frame, "Visible", &visible), "Visible");
    if (!bad && picture) {
        const ZanVariant file = ofText(picture);
        bad = failed(zanProcessEvents(0), "events") ||
              failed(zanInvoke(frame, "SavePicture", ZAN_GET, &file, 1, NULL), picture);
    }
    zanRelease(frame);
    return bad;
}

/* What every other object may be asked too. */
static void countControls(ZanHandle panel)
{
    ZanVariant controls = {0};
    ZanVariant count = {0};
    if (!zanGet(panel, "Controls", &controls) && !zanGet(controls.as.object, "Count", &count))
        printf("%d controls\n", (int)count.as.long_integer);
    zanClear(&controls);
}

static int run(const char* scheme, const char* window, const char* picture)
{
    struct Heard heard = {0, 0};
    ZanHandle subscription = 0;
    const ZanHandle site = create(&SiteClass);
    const ZanHandle panel = create(&PanelClass);
    int bad = !site || !panel || openSite(site, scheme) || load(panel, site, window, &heard, &subscription) ||
              show(panel, titleFor(site), NULL) || connectSite(site, &heard) || changeGrid(panel, &heard) || show(panel, titleFor(site), picture);
    if (!bad)
        countControls(panel);
    if (subscription)
        zanRelease(subscription);
    if (site)
        zanInvoke(site, "Disconnect", ZAN_GET, NULL, 0, NULL);
    if (panel)
        zanRelease(panel);
    if (site)
        zanRelease(site);
    return bad;
}

int main(int argc, char** argv)
{
    int bad;
    if (argc < 3) {
        fprintf(stderr, "usage: panel_in_c SCHEME WINDOW [PICTURE.png]\n");
        return 2;
    }
    if (failed(zanStart(ZAN_DESKTOP), "start"))
        return 1;
    bad = run(argv[1], argv[2], argc > 3 ? argv[3] : NULL);
    if (failed(zanEnd(), "end"))
        return 1;
    if (DllCanUnloadNow() != 0) {
        fprintf(stderr, "something is still alive\n");
        return 1;
    }
    if (!bad)
        printf("nothing is left\n");
    return bad;
}
