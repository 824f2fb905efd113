#pragma once

#include "simulator/picture/PictureSettings.h"

#include <QObject>

#include <gst/gst.h>

namespace simulator {

/// A moving test picture with a caption in it, published as a PipeWire node of class Video/Source from
/// start() to stop(). Without PipeWire there is no picture and one line on the standard error output.
class Picture final : public QObject {
    Q_OBJECT
public:
    explicit Picture(const PictureSettings &settings);
    ~Picture() override;

    /// What a start does only once, done ahead of it.
    void prepare();
    /// Changes the caption when the picture is shown already. False when there is no picture.
    bool start(const QString &caption);
    void stop();

Q_SIGNALS:
    /// The picture has ended by itself.
    void failed();

private:
    bool build();
    void publishAs(GstElement *sink) const;
    void copyInto(GstElement *sink) const;
    void setCaption(const QString &caption);
    void fail(const QString &why);
    static GstBusSyncReply watch(GstBus *bus, GstMessage *message, void *picture);

    PictureSettings mSettings;
    GstElement *mPipeline = nullptr;
    bool mHasComplained = false;
};

} // namespace simulator
