#pragma once

namespace plum {

// What `file.call` wants of the store window, in whose browser the page of the called program will appear.
// The window implements it; every call returns at once. Sizes are in pixels.
class StorePage
{
public:
    virtual ~StorePage() = default;

    virtual void setBrowserWidth(int pixels) = 0;
    virtual void setBrowserHeight(int pixels) = 0;

    // Leaves the browser with an empty page.
    virtual void navigateToBlank() = 0;

    // Sizes the window after its browser and centres it.
    virtual void layOut() = 0;

    virtual void showLoadingPicture() = 0;
};

} // namespace plum
