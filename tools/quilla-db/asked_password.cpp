#include "quilla-db/asked_password.h"

#include "platform/core/error.h"
#include "platform/core/text.h"

#include <cstdio>
#include <iostream>
#include <string>

#include <termios.h>
#include <unistd.h>

namespace quilla {

namespace {

Error fault(const QString& text)
{
    return Error(5, u"quilla-db"_s, text);
}

/// The terminal shows nothing that is typed while this lives.
class WithoutEcho {
public:
    WithoutEcho()
    {
        if (tcgetattr(STDIN_FILENO, &m_before) != 0) throw fault(u"终端不能关闭回显，没有读取密码。"_s);
        termios silent = m_before;
        silent.c_lflag &= ~tcflag_t(ECHO | ISIG); // an interrupt would leave the terminal silent
        if (tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent) != 0)
            throw fault(u"终端不能关闭回显，没有读取密码。"_s);
    }
    ~WithoutEcho() { tcsetattr(STDIN_FILENO, TCSAFLUSH, &m_before); }
    Q_DISABLE_COPY_MOVE(WithoutEcho)

private:
    termios m_before {};
};

QString readLine()
{
    std::string line;
    if (!std::getline(std::cin, line)) throw fault(u"没有读到密码。"_s);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    return QString::fromStdString(line);
}

QString askHidden(const char* prompt)
{
    std::fputs(prompt, stderr);
    const WithoutEcho hidden;
    const QString typed = readLine();
    std::fputc('\n', stderr);
    return typed;
}

} // namespace

QString askedPassword()
{
    const bool isTerminal = isatty(STDIN_FILENO);
    const QString typed = isTerminal ? askHidden("新密码：") : readLine();
    if (typed.isEmpty()) throw fault(u"密码是空的，没有修改。请设置密码，没有密码谁都可以登录。"_s);
    if (isTerminal && askHidden("再输入一次：") != typed) throw fault(u"两次输入的密码不相符，没有修改。"_s);
    return typed;
}

} // namespace quilla
