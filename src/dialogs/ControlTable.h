// Places of windows and controls, in twips as the windows were designed: 1440 to the inch, 15 to the logical
// pixel. Qt scales logical pixels on high-density screens.
#pragma once

#include <QFont>
#include <QMargins>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>
#include <QWidget>

#include <utility>
#include <vector>

namespace boreforge {

constexpr int PixelsOf(int twips) { return twips / 15; }

struct ControlPlace {
    const char* name;              // the object name
    int left, top, width, height;  // twips, relative to the parent
    int tabIndex;
};

// The size of the text in both windows, 8.25 points at 96 dots per inch; it fits the places.
inline constexpr int kTextPixels = 11;

// The widget's font in that size.
QFont WindowFont(const QWidget& widget);

// Sets a control's name, its place and the font of the windows.
void Place(QWidget* control, const ControlPlace& place);

// Controls with their tab indices; the key focus goes through them in ascending order.
using TabOrder = std::vector<std::pair<int, QWidget*>>;

void ApplyTabOrder(TabOrder order);

// The widest text that a control shows and the room for it, in logical pixels. A text of one line may be
// taller than its room.
struct TextPlace {
    QWidget* control = nullptr;
    QString text;
    QSize room;
    bool wraps = false;
};

// Narrows the letters of all these controls by the same factor until each text fits: places are fixed, fonts
// differ in width. Below 60 percent nobody could read them, and what doesn't fit then is cut off.
void FitTexts(const std::vector<TextPlace>& places);

// Where the upper left corner of a window's frame belongs: the frame is in the middle of `area`, but inside
// `screen`; if it is larger than the screen its upper left corner stays visible. Logical pixels.
QPoint CentredCorner(QSize inside, const QMargins& frame, const QRect& area, const QRect& screen);

// Centres a window that isn't shown yet in `area`, on `screen`. The frame may be known only when the window
// is on the screen: until then `frame` is the guess, and the first paint corrects it.
void CentreFrame(QWidget* window, const QRect& area, const QRect& screen, const QMargins& frame = {});

}  // namespace boreforge
