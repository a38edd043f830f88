#pragma once

#include <objbase.h>

namespace plum {

// The calling thread may use components of the system while this object lives.
class ComApartment
{
public:
    ComApartment()
        : m_isMine(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)))
    {
    }
    ~ComApartment()
    {
        if (m_isMine)
            CoUninitialize();
    }
    ComApartment(const ComApartment &) = delete;
    ComApartment &operator=(const ComApartment &) = delete;

private:
    bool m_isMine; // a thread that has chosen otherwise before keeps what it has
};

} // namespace plum
