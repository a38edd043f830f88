#include "screen_picking.h"

#include "picker/picked_picture.h"
#include "picker/picker.h"
#include "platform/pointer.h"

#include <QCoreApplication>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

PickedText pictureFor(const PickRequest &request, const DesktopView &view, const QRect &part)
{
    if (request.folder.isEmpty())
        return {{},
            QCoreApplication::translate(
                "plum::Picker", "A picture is kept in the folder of its app: save the app first.")};
    const PickedPicture picture = savePicture(view, part, request.folder);
    QStringList lines;
    if (!picture.fileName.isEmpty())
        lines += lineForPicture(picture.fileName, request.edition);
    return {lines, picture.report.join(u' ')};
}

} // namespace

ScreenPicking::ScreenPicking(Platform &platform)
    : m_platform(platform)
{
}

ScreenPicking::~ScreenPicking() = default;

void ScreenPicking::pick(const PickRequest &request, const std::function<void(const PickedText &)> &then)
{
    const auto view = DesktopView::take(m_platform.screen(), m_platform.windows());
    if (!view) {
        then({{}, QCoreApplication::translate("plum::Picker", "There is no desktop that can be looked at.")});
        return;
    }
    m_picker = std::make_unique<Picker>(*view, Picker::Wish{PickedLine::Move, request.edition});
    // The picker tells of it while it is at work.
    const auto end = [this, then](const PickedText &picked) {
        m_picker.release()->deleteLater();
        then(picked);
    };
    QObject::connect(m_picker.get(), &Picker::pointTaken, m_picker.get(),
        [end, request](const PickedPoint &point, PickedLine line) {
            end({linesFor(line, point, request.edition), factsOf(point).join(u" · "_s)});
        });
    QObject::connect(m_picker.get(), &Picker::rectangleTaken, m_picker.get(),
        [this, end, request](const QRect &part) { end(pictureFor(request, m_picker->view(), part)); });
    QObject::connect(m_picker.get(), &Picker::givenUp, m_picker.get(), [end] { end({}); });
    m_picker->start(m_platform.pointer().position());
}

} // namespace plum
