# install.ps1 install registers the service "hello", whose program hello.exe lies in this folder, and starts
# it; remove stops it and removes it, if it is there; upgrade removes it, with what sc has set, moves hello.new
# over hello.exe, if it is there, and installs it again. Needs svcinst.exe in this folder and an administrator's
# prompt. Asks nothing, and upgrade and remove may be repeated. Ends with 0, or with 1 and a message; where only
# the start fails, the service stays registered. Reads like install.bat; not tried.
$folder = $PSScriptRoot
$tool = Join-Path $folder 'svcinst.exe'

function Stop-Script([string]$message) {
    Write-Host "install.ps1: $message"
    exit 1
}

if ($args.Count -ne 1 -or $args[0] -notin 'install', 'remove', 'upgrade') {
    Write-Host 'usage: install.ps1 install, install.ps1 remove or install.ps1 upgrade'
    exit 1
}
$user = [Security.Principal.WindowsPrincipal][Security.Principal.WindowsIdentity]::GetCurrent()
if (-not $user.IsInRole([Security.Principal.WindowsBuiltInRole]::Administrator)) {
    Stop-Script "this is no administrator's prompt."
}
# Without it $LASTEXITCODE would be that of another program.
if (-not (Test-Path -LiteralPath $tool)) { Stop-Script "there is no '$tool'." }
# The service's path is registered without quotes, and Windows could start another program.
if ($args[0] -ne 'remove' -and $folder.Contains(' ')) {
    Stop-Script "the name of this folder has a blank: '$folder'"
}
if ($args[0] -eq 'install' -and (Get-Service hello -ErrorAction SilentlyContinue)) {
    Stop-Script 'there is a service "hello" already: upgrade replaces it.'
}

if ($args[0] -ne 'install') {
    if (Get-Service hello -ErrorAction SilentlyContinue) {
        & $tool --uninstall --name hello
        if ($LASTEXITCODE -ne 0) { Stop-Script 'failed: see the message above.' }
    } else {
        Write-Host 'There is no service "hello".'
    }
    # The name is free once the service's process has ended and nobody has a handle to it.
    for ($seconds = 0; Get-Service hello -ErrorAction SilentlyContinue; $seconds++) {
        if ($seconds -ge 30) {
            Stop-Script 'the service "hello" is marked for deletion, but something still uses it.'
        }
        Start-Sleep -Seconds 1
    }
}
if ($args[0] -eq 'remove') { exit 0 }

# The process that has just ended may still hold its file.
$new = Join-Path $folder 'hello.new'
for ($seconds = 0; $args[0] -eq 'upgrade' -and (Test-Path -LiteralPath $new); $seconds++) {
    if ($seconds -ge 30) {
        Stop-Script "the service is removed, but hello.new can't be moved over hello.exe: repeat the upgrade later."
    }
    if ($seconds -gt 0) { Start-Sleep -Seconds 1 }
    Move-Item -LiteralPath $new -Destination (Join-Path $folder 'hello.exe') -Force -ErrorAction SilentlyContinue
}

# The tool is started by its full path: "hello.exe" is then looked for in the tool's folder.
& $tool --install --name hello --disname 'Hello service' --binpath hello.exe `
    --dep RpcSs --desc 'Says hello to the network.'
if ($LASTEXITCODE -ne 0) { Stop-Script 'failed: see the message above.' }
Start-Service hello
if (-not $?) { Stop-Script 'failed: see the message above.' }
exit 0
