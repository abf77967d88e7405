#pragma once

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

#include <string>

/// Loads a library at run time and unloads it in the destructor.
class Library
{
public:
#ifdef _WIN32
    explicit Library(const char *path) : m_handle(LoadLibraryA(path))
    {
        if (!m_handle)
            m_error = std::string(path) + ", or a library that it needs, cannot be loaded (system error " +
                      std::to_string(GetLastError()) + ")";
    }
    ~Library()
    {
        if (m_handle)
            FreeLibrary(m_handle);
    }
    void *find(const char *name) const
    {
        return reinterpret_cast<void *>(GetProcAddress(m_handle, name));
    }
#else
    explicit Library(const char *path) : m_handle(dlopen(path, RTLD_NOW | RTLD_LOCAL))
    {
        if (!m_handle)
            m_error = dlerror();
    }
    ~Library()
    {
        if (m_handle)
            dlclose(m_handle);
    }
    void *find(const char *name) const
    {
        return dlsym(m_handle, name);
    }
#endif
    Library(const Library &) = delete;
    Library &operator=(const Library &) = delete;

    /// The reason why the library could not be loaded; empty on success.
    const std::string &error() const
    {
        return m_error;
    }

private:
#ifdef _WIN32
    HMODULE m_handle;
#else
    void *m_handle;
#endif
    std::string m_error;
};
