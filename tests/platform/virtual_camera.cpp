// A camera for tests: publishes one PipeWire node with a plain picture.
//
//   virtual_camera <node name> <description> [<colour as 0xAARRGGBB> [<caps>]]
//
// Commands on standard input, one per line; its end ends the camera:
//   pause          no picture from now on (the node stays)
//   resume         pictures again
//   colour 0x…     another colour
//   caps <caps>    another size or format

#include <gst/gst.h>

#include <cstdlib>
#include <cstring>
#include <string>

namespace {

struct Camera {
    GstElement *pipeline = nullptr;
    GMainLoop *loop = nullptr;
};

void set(const Camera &camera, const char *element, const char *property, const std::string &value)
{
    GstElement *target = gst_bin_get_by_name(GST_BIN(camera.pipeline), element);
    gst_util_set_object_arg(G_OBJECT(target), property, value.c_str());
    gst_object_unref(target);
}

void obey(const Camera &camera, const std::string &command)
{
    const auto argument = [&command](const char *word) -> const char * {
        const std::size_t length = std::strlen(word);
        return command.compare(0, length, word) == 0 ? command.c_str() + length : nullptr;
    };
    if (command == "pause" || command == "resume")
        set(camera, "valve", "drop", command == "pause" ? "true" : "false");
    else if (const char *colour = argument("colour "))
        set(camera, "source", "foreground-color", std::to_string(std::strtoul(colour, nullptr, 0)));
    else if (const char *caps = argument("caps "))
        set(camera, "caps", "caps", caps);
}

gboolean readCommand(GIOChannel *channel, GIOCondition, gpointer data)
{
    const auto *camera = static_cast<const Camera *>(data);
    gchar *line = nullptr;
    if (g_io_channel_read_line(channel, &line, nullptr, nullptr, nullptr) != G_IO_STATUS_NORMAL) {
        g_main_loop_quit(camera->loop);
        return G_SOURCE_REMOVE;
    }
    obey(*camera, g_strchomp(line));
    g_free(line);
    return G_SOURCE_CONTINUE;
}

gboolean onMessage(GstBus *, GstMessage *message, gpointer data)
{
    if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR)
        g_main_loop_quit(static_cast<Camera *>(data)->loop);
    return G_SOURCE_CONTINUE;
}

GstElement *makePipeline(const char *name, const char *description)
{
    GstElement *pipeline =
        gst_parse_launch("videotestsrc name=source is-live=true pattern=solid-color ! capsfilter name=caps"
                         " ! valve name=valve drop-mode=forward-sticky-events"
                         " ! identity drop-allocation=true ! pipewiresink name=sink "
                         "mode=provide sync=false",
                         nullptr);
    GstElement *sink = gst_bin_get_by_name(GST_BIN(pipeline), "sink");
    GstStructure *properties =
        gst_structure_new("props", "media.class", G_TYPE_STRING, "Video/Source", "node.name", G_TYPE_STRING,
                          name, "node.description", G_TYPE_STRING, description, nullptr);
    g_object_set(sink, "stream-properties", properties, nullptr);
    gst_structure_free(properties);
    gst_object_unref(sink);
    return pipeline;
}

} // namespace

int main(int argc, char **argv)
{
    gst_init(nullptr, nullptr);
    if (argc < 3)
        return EXIT_FAILURE;
    Camera camera{makePipeline(argv[1], argv[2]), g_main_loop_new(nullptr, FALSE)};
    obey(camera, std::string("colour ") + (argc > 3 ? argv[3] : "0xffff0000"));
    obey(camera,
         std::string("caps ")
             + (argc > 4 ? argv[4] : "video/x-raw,format=I420,width=320,height=240,framerate=30/1"));
    GIOChannel *input = g_io_channel_unix_new(0);
    g_io_add_watch(input, static_cast<GIOCondition>(G_IO_IN | G_IO_HUP), readCommand, &camera);
    GstBus *bus = gst_element_get_bus(camera.pipeline);
    gst_bus_add_watch(bus, onMessage, &camera);
    gst_element_set_state(camera.pipeline, GST_STATE_PLAYING);
    g_main_loop_run(camera.loop);
    gst_element_set_state(camera.pipeline, GST_STATE_NULL);
    gst_bus_remove_watch(bus);
    gst_object_unref(bus);
    gst_object_unref(camera.pipeline);
    g_io_channel_unref(input);
    g_main_loop_unref(camera.loop);
    return EXIT_SUCCESS;
}
