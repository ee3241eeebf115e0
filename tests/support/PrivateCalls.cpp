#include "tests/support/PrivateCalls.h"

#include "app/MainWindow.h"
#include "app/Volume.h"

namespace {

// An explicit instantiation may name a private member: it defines a friend function that returns the member.

using HideLoadingOverlay = void (MainWindow::*)();
HideLoadingOverlay hideFunction();

template <HideLoadingOverlay Function>
struct HideAccess
{
    friend HideLoadingOverlay hideFunction()
    {
        return Function;
    }
};
template struct HideAccess<&MainWindow::hideLoadingOverlay>;

using ListVolumes = void (MainWindow::*)(const QList<Volume> &);
ListVolumes listFunction();

template <ListVolumes Function>
struct ListAccess
{
    friend ListVolumes listFunction()
    {
        return Function;
    }
};
template struct ListAccess<&MainWindow::listVolumes>;

} // namespace

void hideLoadingOverlay(MainWindow &window)
{
    (window.*hideFunction())();
}

void listVolumes(MainWindow &window, const QList<Volume> &volumes)
{
    (window.*listFunction())(volumes);
}
