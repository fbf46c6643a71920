@echo off
rem install.cmd             installs the library and the sample host for the current user
rem install.cmd /all        for all users; needs an administrator
rem install.cmd /uninstall  takes away what was installed for the current user; with /all, for all users
setlocal
set here=%~dp0
set self=%~f0
set options=%*
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

if /i "%here%"=="%target%\" goto register
if not exist "%target%" mkdir "%target%"
xcopy /e /i /q /y "%here%*" "%target%\" >nul
if errorlevel 1 (
    echo install.cmd: the files could not be copied to %target%
    exit /b 1
)
:register
regsvr32 /s %how% "%target%\kavrelon.dll"
if errorlevel 1 (
    echo install.cmd: the library could not be registered
    exit /b 1
)
echo Kavrelon is installed in %target%; to begin, start "%target%\samplehost.exe"
exit /b 0

:uninstall
if not exist "%target%\kavrelon.dll" (
    echo install.cmd: nothing is installed in %target%
    exit /b 1
)
rem The installed copy of this file cannot take away the folder that it runs from: a copy of it does.
if /i not "%here%"=="%target%\" goto away
copy /y "%self%" "%TEMP%\kavrelon-uninstall.cmd" >nul
"%TEMP%\kavrelon-uninstall.cmd" %options%

:away
regsvr32 /s /u "%target%\kavrelon.dll"
if errorlevel 1 (
    echo install.cmd: the library could not be unregistered
    exit /b 1
)
cd /d "%TEMP%"
rmdir /s /q "%target%"
if exist "%target%\kavrelon.dll" (
    echo install.cmd: %target% could not be removed: is the sample host running?
    exit /b 1
)
echo Kavrelon is gone from %target%; settings stay in %APPDATA%\Kavrelon Sample Host
if /i "%self%"=="%TEMP%\kavrelon-uninstall.cmd" (del "%self%" & exit /b 0)
exit /b 0
