// Sorts the names on stdin, one per line, and prints them below the name of the process's locale.
// Exits with status 1 if that locale does not exist.

#include "FileNameOrder.h"

#include <QCoreApplication>
#include <QLocale>

#include <clocale>
#include <iostream>
#include <string>
#include <vector>

int main(int argc, char** argv) {
    // NOLINTNEXTLINE(concurrency-mt-unsafe): there is one thread.
    if (std::setlocale(LC_ALL, "") == nullptr) {
        return 1;
    }
    const QCoreApplication application(argc, argv);
    std::vector<kestrel::FileURL> urls;
    for (std::string name; std::getline(std::cin, name);) {
        urls.emplace_back("/" + name);
    }
    kestrel::sortByFileName(urls);
    std::cout << QLocale::system().name().toStdString() << '\n';
    for (const kestrel::FileURL& url : urls) {
        std::cout << url.lastPathComponent() << '\n';
    }
    return 0;
}
