#pragma once
// The settings store of the library: one INI file, sections and keys, behind one mutex. Each
// operation opens its own QSettings on the file inside the lock and drops it before returning, so
// no QSettings object outlives a call or waits for an event loop. Any thread.

#include <mutex>
#include <string>

class CLS_LxParamStore
{
public:
    CLS_LxParamStore() = default;
    CLS_LxParamStore(const CLS_LxParamStore&) = delete;
    CLS_LxParamStore& operator=(const CLS_LxParamStore&) = delete;

    int Init(const std::string& _strFile);
    bool IsInit();
    int Set(const std::string& _strSection, const std::string& _strKey, const std::string& _strValue);
    std::string Get(const std::string& _strSection, const std::string& _strKey,
                    const std::string& _strDefault);
    int Delete(const std::string& _strSection, const std::string& _strKey);
    void UnInit();
    std::string FilePath();

    // LXPARAM_FILE when set, else "<executable dir>/LxParam.ini".
    static std::string ChooseFile();

private:
    // Under m_mtx.
    void EnsureFile();

    std::mutex m_mtx;
    std::string m_strFile; // empty until chosen
};
