@echo off
rem install.cmd             installs the library and the sample host for the current user
rem install.cmd /all        for all users; needs an administrator
rem install.cmd /uninstall  takes away what was installed for the current user; with /all, for all users
setlocal
set remove=
set everyone=
set bad=
:option
if "%~1"=="" goto chosen
if /i "%~1"=="/uninstall" (set remove=1) else if /i "%~1"=="/all" (set everyone=1) else (set bad=%~1)
shift
goto option
:chosen
if not "%bad%"=="" (
    echo install.cmd: there is no option %bad%, but /all and /uninstall
    exit /b 2
)

set target=%LOCALAPPDATA%\Programs\Kavrelon
set how=/n /i:user
if "%everyone%"=="1" (
    set target=%ProgramFiles%\Kavrelon
    set how=/n /i
)
if not "%remove%"=="" goto uninstall

if not exist "%target%" mkdir "%target%"
xcopy /e /i /q /y "%~dp0*" "%target%\" >nul
if errorlevel 1 (
    echo install.cmd: the files could not be copied to %target%
    exit /b 1
)
regsvr32 /s %how% "%target%\kavrelon.dll"
if errorlevel 1 (
    echo install.cmd: the library could not be registered
    exit /b 1
)
echo Kavrelon is installed in %target%
exit /b 0

:uninstall
if not exist "%target%\kavrelon.dll" (
    echo install.cmd: nothing is installed in %target%
    exit /b 1
)
regsvr32 /s /u "%target%\kavrelon.dll"
if errorlevel 1 (
    echo install.cmd: the library could not be unregistered
    exit /b 1
)
rem This file may be among those that go: what is left to do stands on one line.
cd /d "%TEMP%" & rmdir /s /q "%target%" & echo Kavrelon is gone from %target% & exit /b 0
