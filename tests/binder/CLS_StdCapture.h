#pragma once
// Test helper: catches what the process writes to its standard output and error streams while it
// lives, at the file descriptor level, so std::cout, std::cerr and printf are all caught. The
// streams are given back on Stop() or at destruction, whichever comes first, so a failing check
// never leaves the test runner writing into a file.

#include <QString>
#include <QStringList>

#include <cstdio>
#include <iostream>
#include <string>

#include <unistd.h>

class CLS_StdCapture
{
public:
    CLS_StdCapture()
    {
        FlushAll();
        m_pOutFile = std::tmpfile();
        m_pErrFile = std::tmpfile();
        m_iSavedOut = dup(STDOUT_FILENO);
        m_iSavedErr = dup(STDERR_FILENO);
        dup2(fileno(m_pOutFile), STDOUT_FILENO);
        dup2(fileno(m_pErrFile), STDERR_FILENO);
        m_blActive = true;
    }

    ~CLS_StdCapture()
    {
        Stop();
        std::fclose(m_pOutFile);
        std::fclose(m_pErrFile);
    }

    CLS_StdCapture(const CLS_StdCapture&) = delete;
    CLS_StdCapture& operator=(const CLS_StdCapture&) = delete;

    // Gives the streams back and reads what was written. Further calls do nothing.
    void Stop()
    {
        if (!m_blActive) {
            return;
        }
        m_blActive = false;
        FlushAll();
        dup2(m_iSavedOut, STDOUT_FILENO);
        dup2(m_iSavedErr, STDERR_FILENO);
        close(m_iSavedOut);
        close(m_iSavedErr);
        m_strOut = ReadAll(m_pOutFile);
        m_strErr = ReadAll(m_pErrFile);
    }

    std::string Out() const { return m_strOut; }
    std::string Err() const { return m_strErr; }

    // The text split at line ends; a text that ends with a line end has no empty last line.
    QStringList OutLines() const { return SplitLines(m_strOut); }
    QStringList ErrLines() const { return SplitLines(m_strErr); }

private:
    static void FlushAll()
    {
        std::cout.flush();
        std::cerr.flush();
        std::fflush(stdout);
        std::fflush(stderr);
    }

    static std::string ReadAll(std::FILE* _pFile)
    {
        std::string strText;
        const int iFd = fileno(_pFile);
        lseek(iFd, 0, SEEK_SET);
        char szBuf[4096];
        ssize_t iRead = 0;
        while ((iRead = read(iFd, szBuf, sizeof(szBuf))) > 0) {
            strText.append(szBuf, static_cast<size_t>(iRead));
        }
        return strText;
    }

    static QStringList SplitLines(const std::string& _strText)
    {
        QStringList qlstLines = QString::fromStdString(_strText).split(QLatin1Char('\n'));
        if (!qlstLines.isEmpty() && qlstLines.last().isEmpty()) {
            qlstLines.removeLast();
        }
        return qlstLines;
    }

    std::FILE* m_pOutFile = nullptr;
    std::FILE* m_pErrFile = nullptr;
    int m_iSavedOut = -1;
    int m_iSavedErr = -1;
    bool m_blActive = false;
    std::string m_strOut;
    std::string m_strErr;
};
