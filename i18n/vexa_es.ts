<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es">
<context>
    <name>Banner</name>
    <message>
        <source>Close the message</source>
        <translation>Cerrar el mensaje</translation>
    </message>
</context>
<context>
    <name>BrowseRow</name>
    <message>
        <source>Try %1 again</source>
        <translation>Reintentar %1</translation>
    </message>
    <message>
        <source>Install %1</source>
        <translation>Instalar %1</translation>
    </message>
    <message>
        <source>Cancel %1</source>
        <translation>Cancelar %1</translation>
    </message>
</context>
<context>
    <name>BusyMark</name>
    <message>
        <source>Please wait</source>
        <translation>Un momento, por favor</translation>
    </message>
</context>
<context>
    <name>CatalogRefresher</name>
    <message>
        <source>The folder %1 cannot be made.</source>
        <translation>No se puede crear la carpeta %1.</translation>
    </message>
    <message>
        <source>%1 cannot be reached, or it is no map server.</source>
        <translation>No se puede acceder a %1, o no es un servidor de mapas.</translation>
    </message>
    <message>
        <source>%1 names no usable map version.</source>
        <translation>%1 no indica ninguna versión de mapas utilizable.</translation>
    </message>
    <message>
        <source>The server does not deliver %1.</source>
        <translation>El servidor no proporciona %1.</translation>
    </message>
    <message>
        <source>The server&apos;s %1 is damaged or lists no regions; the old one stays.</source>
        <translation>El archivo %1 del servidor está dañado o no contiene regiones; se conserva el anterior.</translation>
    </message>
    <message>
        <source>%1 cannot be written.</source>
        <translation>No se puede escribir %1.</translation>
    </message>
</context>
<context>
    <name>ConfirmDialog</name>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
</context>
<context>
    <name>DataSetLock</name>
    <message>
        <source>The folder %1 cannot be made.</source>
        <translation>No se puede crear la carpeta %1.</translation>
    </message>
    <message>
        <source>The lock file %1 cannot be written.</source>
        <translation>No se puede escribir el archivo de bloqueo %1.</translation>
    </message>
    <message>
        <source>Another program (process %1) is at work on this map data. Try again when it is done.</source>
        <translation>Otro programa (proceso %1) está usando estos datos de mapas. Se puede volver a intentar cuando termine.</translation>
    </message>
</context>
<context>
    <name>DataSetSwap</name>
    <message>
        <source>An update that was cut short was finished: the new maps are in use.</source>
        <translation>Se ha completado una actualización interrumpida: los mapas nuevos están en uso.</translation>
    </message>
    <message>
        <source>An update that was cut short could not be finished: the old maps are in use.</source>
        <translation>No se ha podido completar una actualización interrumpida: los mapas antiguos están en uso.</translation>
    </message>
    <message>
        <source>Going back to the old maps was cut short and is finished now.</source>
        <translation>La vuelta a los mapas antiguos se había interrumpido y ya se ha completado.</translation>
    </message>
    <message>
        <source>Going back to the old maps could not be finished: the new maps are in use.</source>
        <translation>No se ha podido completar la vuelta a los mapas antiguos: los mapas nuevos están en uso.</translation>
    </message>
    <message>
        <source>A removal that was cut short was finished.</source>
        <translation>Se ha completado una eliminación interrumpida.</translation>
    </message>
    <message>
        <source>Voice data that a removal had set aside is in its place again.</source>
        <translation>Los datos de voz apartados durante una eliminación vuelven a estar en su sitio.</translation>
    </message>
    <message>
        <source>An exchange of the map data was cut short and cannot be brought to an end.</source>
        <translation>Se interrumpió un cambio de los datos de mapas y no se puede completar.</translation>
    </message>
    <message>
        <source>What was in the way is now called %1.</source>
        <translation>Lo que estorbaba se llama ahora %1.</translation>
    </message>
    <message>
        <source>The map data is being loaded or changed. Try again when that is done.</source>
        <translation>Los datos de mapas se están cargando o cambiando. Se puede volver a intentar cuando termine.</translation>
    </message>
    <message>
        <source>The exchange of the map data could not be brought to an end: %1</source>
        <translation>No se ha podido completar el cambio de los datos de mapas: %1</translation>
    </message>
    <message>
        <source>The map data could not be exchanged, and is as it was before: %1</source>
        <translation>No se han podido cambiar los datos de mapas y siguen como antes: %1</translation>
    </message>
    <message>
        <source>The shell did not move every folder; the rest was moved without it.</source>
        <translation>El intérprete de órdenes no movió todas las carpetas; las demás se movieron sin él.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot stand behind the name of a data set.</source>
        <translation>&quot;%1&quot; no puede ir detrás del nombre de un conjunto de datos.</translation>
    </message>
    <message>
        <source>An exchange of the map data was cut short. Start the program again first.</source>
        <translation>Se interrumpió un cambio de los datos de mapas. Primero hay que reiniciar el programa.</translation>
    </message>
</context>
<context>
    <name>DataSetUpdate</name>
    <message>
        <source>The server has been silent for %1 s; giving up.</source>
        <translation>El servidor no responde desde hace %1&#xa0;s; se abandona.</translation>
    </message>
    <message>
        <source>An update is under way.</source>
        <translation>Hay una actualización en curso.</translation>
    </message>
    <message>
        <source>There is no backup to go back to.</source>
        <translation>No hay ninguna copia de seguridad a la que volver.</translation>
    </message>
    <message>
        <source>Installs are pending (%1).</source>
        <translation>Hay instalaciones pendientes (%1).</translation>
    </message>
    <message>
        <source>Regions were installed since and are not in the backup: %1.</source>
        <translation>Desde entonces se han instalado regiones que no están en la copia de seguridad: %1.</translation>
    </message>
    <message>
        <source>The city index and the state of the update cannot be written.</source>
        <translation>No se pueden escribir el índice de ciudades ni el estado de la actualización.</translation>
    </message>
    <message>
        <source>An earlier change of the maps was cut short and has to be repaired first.</source>
        <translation>Un cambio anterior de los mapas se interrumpió y primero hay que repararlo.</translation>
    </message>
    <message>
        <source>The folder %1 has letters in its name that the commands of an update cannot take.</source>
        <translation>El nombre de la carpeta %1 tiene caracteres que las órdenes de una actualización no admiten.</translation>
    </message>
    <message>
        <source>There is no catalogue yet.</source>
        <translation>Todavía no hay catálogo.</translation>
    </message>
    <message>
        <source>The backup of an earlier update is still there.</source>
        <translation>Todavía existe la copia de seguridad de una actualización anterior.</translation>
    </message>
    <message>
        <source>The state of the update cannot be written.</source>
        <translation>No se puede escribir el estado de la actualización.</translation>
    </message>
    <message>
        <source>Version %1 lacks installed regions: %2.</source>
        <translation>En la versión %1 faltan regiones instaladas: %2.</translation>
    </message>
    <message>
        <source>The prepared maps cannot be written.</source>
        <translation>No se pueden escribir los mapas preparados.</translation>
    </message>
</context>
<context>
    <name>DetailsPane</name>
    <message numerus="yes">
        <source>%n map(s) inside</source>
        <translation>
            <numerusform>contiene %n mapa</numerusform>
            <numerusform>contiene %n mapas</numerusform>
        </translation>
    </message>
    <message>
        <source>Choose a map</source>
        <translation>Elija un mapa</translation>
    </message>
    <message>
        <source>Its size, and what can be done with it, are shown here.</source>
        <translation>Aquí se muestran su tamaño y lo que se puede hacer con él.</translation>
    </message>
</context>
<context>
    <name>DeviceSummary</name>
    <message>
        <source>No network</source>
        <translation>Sin red</translation>
    </message>
    <message>
        <source>Wi-Fi or cable</source>
        <translation>Wi‑Fi o cable</translation>
    </message>
    <message>
        <source>Mobile network</source>
        <translation>Red móvil</translation>
    </message>
    <message>
        <source>%1 free</source>
        <translation>%1 libres</translation>
    </message>
</context>
<context>
    <name>DiskProbe</name>
    <message>
        <source>The disk takes no more data. Is it full?</source>
        <translation>El disco no admite más datos. ¿Está lleno?</translation>
    </message>
</context>
<context>
    <name>FolderExchange</name>
    <message>
        <source>%1 is missing.</source>
        <translation>Falta %1.</translation>
    </message>
    <message>
        <source>%1 is in the way and cannot be renamed.</source>
        <translation>%1 estorba y no se puede renombrar.</translation>
    </message>
</context>
<context>
    <name>HttpFile</name>
    <message>
        <source>%1 gives status %2.</source>
        <translation>%1 devuelve el estado %2.</translation>
    </message>
    <message>
        <source>%1 is far too large.</source>
        <translation>%1 es demasiado grande.</translation>
    </message>
    <message>
        <source>Interrupted.</source>
        <translation>Interrumpido.</translation>
    </message>
    <message>
        <source>%1 has been silent for %2 s.</source>
        <translation>%1 no responde desde hace %2&#xa0;s.</translation>
    </message>
    <message>
        <source>%1 cannot be reached: %2.</source>
        <translation>No se puede acceder a %1: %2.</translation>
    </message>
    <message>
        <source>%1 is compressed on the way, though it must not.</source>
        <translation>%1 se comprime durante la transferencia, lo que no está permitido.</translation>
    </message>
    <message>
        <source>%1 has changed while it was read.</source>
        <translation>%1 ha cambiado durante la lectura.</translation>
    </message>
    <message>
        <source>%1 breaks off: %2.</source>
        <translation>%1 se interrumpe: %2.</translation>
    </message>
    <message>
        <source>%1 gives fewer bytes than it says.</source>
        <translation>%1 entrega menos bytes de los que anuncia.</translation>
    </message>
    <message>
        <source>%1 gives more bytes than it says.</source>
        <translation>%1 entrega más bytes de los que anuncia.</translation>
    </message>
    <message>
        <source>%1 gives another part than was asked for.</source>
        <translation>%1 entrega una parte distinta de la solicitada.</translation>
    </message>
</context>
<context>
    <name>InstalledPage</name>
    <message>
        <source>Installed maps</source>
        <translation>Mapas instalados</translation>
    </message>
    <message>
        <source>%1 free on this device</source>
        <translation>%1 libres en este dispositivo</translation>
    </message>
    <message>
        <source>Update %1</source>
        <translation>Actualizar %1</translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation>Eliminar %1</translation>
    </message>
    <message>
        <source>No map is installed</source>
        <translation>No hay ningún mapa instalado</translation>
    </message>
    <message>
        <source>Installed maps work without any network. Choose the regions that you need.</source>
        <translation>Los mapas instalados funcionan sin conexión a la red. Basta con elegir las regiones necesarias.</translation>
    </message>
    <message>
        <source>Choose maps</source>
        <translation>Elegir mapas</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>Maps</source>
        <translation>Mapas</translation>
    </message>
    <message>
        <source>Opening the maps</source>
        <translation>Abriendo los mapas</translation>
    </message>
    <message>
        <source>The maps cannot be opened</source>
        <translation>No se pueden abrir los mapas</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Reintentar</translation>
    </message>
    <message>
        <source>Installed</source>
        <translation>Instalados</translation>
    </message>
    <message>
        <source>Transfers</source>
        <translation>Descargas</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Ajustes</translation>
    </message>
    <message>
        <source>%1 is removed; %2 are free again.</source>
        <translation>Se ha eliminado %1; vuelven a estar libres %2.</translation>
    </message>
</context>
<context>
    <name>MapsSession</name>
    <message>
        <source>The server is silent. Try again later.</source>
        <translation>El servidor no responde. Se puede volver a intentar más tarde.</translation>
    </message>
    <message>
        <source>Let the transfers end, or cancel them, before you look for new maps.</source>
        <translation>Antes de buscar mapas nuevos, las descargas deben haber terminado o cancelarse.</translation>
    </message>
    <message>
        <source>There is no network connection.</source>
        <translation>No hay conexión de red.</translation>
    </message>
    <message>
        <source>The list of maps is up to date (version %1).</source>
        <translation>La lista de mapas está al día (versión %1).</translation>
    </message>
    <message>
        <source>The server has newer maps (version %1). The installed ones stay at version %2.</source>
        <translation>El servidor tiene mapas más recientes (versión %1). Los instalados siguen en la versión %2.</translation>
    </message>
</context>
<context>
    <name>MapsUpdate</name>
    <message>
        <source>All maps are being updated. No other map can be installed or removed until that is done.</source>
        <translation>Se están actualizando todos los mapas. Hasta que termine no se puede instalar ni eliminar ningún otro mapa.</translation>
    </message>
    <message>
        <source>An update of all maps is not finished. Go on with it, or give it up, before you install or remove maps.</source>
        <translation>Una actualización de todos los mapas no ha terminado. Continúela o abandónela antes de instalar o eliminar mapas.</translation>
    </message>
    <message>
        <source>The old maps of the last update are still kept. Remove them first.</source>
        <translation>Todavía se conservan los mapas antiguos de la última actualización. Elimínelos primero.</translation>
    </message>
    <message>
        <source>There is no network connection.</source>
        <translation>No hay conexión de red.</translation>
    </message>
    <message>
        <source>Downloads wait for Wi-Fi.</source>
        <translation>Las descargas esperan a la Wi‑Fi.</translation>
    </message>
    <message>
        <source>The maps are being changed already.</source>
        <translation>Los mapas ya se están modificando.</translation>
    </message>
    <message>
        <source>The maps are not open yet.</source>
        <translation>Los mapas aún no están abiertos.</translation>
    </message>
    <message>
        <source>The list of maps is being fetched. Wait until that is done.</source>
        <translation>Se está obteniendo la lista de mapas. Espere a que termine.</translation>
    </message>
    <message>
        <source>Let the transfers end, or cancel them, before you update all maps.</source>
        <translation>Deje que terminen las transferencias, o cancélelas, antes de actualizar todos los mapas.</translation>
    </message>
    <message>
        <source>The old maps are being removed.</source>
        <translation>Se están eliminando los mapas antiguos.</translation>
    </message>
</context>
<context>
    <name>NavButton</name>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
</context>
<context>
    <name>OldMapsCard</name>
    <message>
        <source>Old maps</source>
        <translation>Mapas antiguos</translation>
    </message>
    <message>
        <source>Kept version</source>
        <translation>Versión conservada</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Tamaño</translation>
    </message>
    <message>
        <source>Being measured</source>
        <translation>Midiendo</translation>
    </message>
    <message>
        <source>Keep old maps</source>
        <translation>Conservar los mapas antiguos</translation>
    </message>
    <message>
        <source>Go back to version %1</source>
        <translation>Volver a la versión %1</translation>
    </message>
    <message>
        <source>Remove old maps</source>
        <translation>Eliminar los mapas antiguos</translation>
    </message>
    <message>
        <source>Remove the backup</source>
        <translation>Eliminar la copia de seguridad</translation>
    </message>
    <message>
        <source>Go back to version %1?</source>
        <translation>¿Volver a la versión %1?</translation>
    </message>
    <message>
        <source>The old maps are put in use again. The newer ones stay on this device until you remove them.</source>
        <translation>Los mapas antiguos vuelven a usarse. Los más nuevos permanecen en este dispositivo hasta que los elimine.</translation>
    </message>
    <message>
        <source>These maps were installed since and are not among the old ones: %1.</source>
        <translation>Estos mapas se instalaron después y no están entre los antiguos: %1.</translation>
    </message>
    <message>
        <source>Go back</source>
        <translation>Volver</translation>
    </message>
    <message>
        <source>Remove the old maps?</source>
        <translation>¿Eliminar los mapas antiguos?</translation>
    </message>
    <message>
        <source>This frees %1.</source>
        <translation>Esto libera %1.</translation>
    </message>
    <message>
        <source>You cannot go back to version %1 afterwards.</source>
        <translation>Después no podrá volver a la versión %1.</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Eliminar</translation>
    </message>
    <message>
        <source>Being removed</source>
        <translation>Eliminando</translation>
    </message>
</context>
<context>
    <name>PageHeader</name>
    <message>
        <source>Back</source>
        <translation>Atrás</translation>
    </message>
</context>
<context>
    <name>PreparedSet</name>
    <message>
        <source>The folders %1 and %2 cannot be written.</source>
        <translation>No se puede escribir en las carpetas %1 y %2.</translation>
    </message>
    <message>
        <source>The city index and config.cfg cannot be copied to the new maps.</source>
        <translation>No se pueden copiar el índice de ciudades y config.cfg a los mapas nuevos.</translation>
    </message>
    <message>
        <source>The file %1 cannot be removed.</source>
        <translation>No se puede eliminar el archivo %1.</translation>
    </message>
    <message>
        <source>The state of the update cannot be written.</source>
        <translation>No se puede escribir el estado de la actualización.</translation>
    </message>
</context>
<context>
    <name>ProgressLine</name>
    <message>
        <source>Progress is not known yet</source>
        <translation>Aún no se conoce el progreso</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1&#xa0;%</translation>
    </message>
</context>
<context>
    <name>RegionDetails</name>
    <message>
        <source>Download</source>
        <translation>Descarga</translation>
    </message>
    <message>
        <source>Needs when installed</source>
        <translation>Espacio necesario una vez instalado</translation>
    </message>
    <message>
        <source>On this device</source>
        <translation>En este dispositivo</translation>
    </message>
    <message>
        <source>Cancel the download</source>
        <translation>Cancelar la descarga</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Eliminar</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Reintentar</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>Actualizar</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Instalar</translation>
    </message>
</context>
<context>
    <name>RegionInstaller</name>
    <message>
        <source>The catalogue has no region &quot;%1&quot;.</source>
        <translation>El catálogo no contiene ninguna región &quot;%1&quot;.</translation>
    </message>
    <message>
        <source>%1 is being installed already.</source>
        <translation>%1 ya se está instalando.</translation>
    </message>
    <message>
        <source>The catalogue gives no usable address for %1.</source>
        <translation>El catálogo no indica ninguna dirección utilizable para %1.</translation>
    </message>
    <message>
        <source>%1 needs %2, but only %3 are free.</source>
        <translation>%1 necesita %2, pero solo hay %3 libres.</translation>
    </message>
    <message>
        <source>The list of pending installs could not be written.</source>
        <translation>No se ha podido escribir la lista de instalaciones pendientes.</translation>
    </message>
    <message>
        <source>%1 is not being installed.</source>
        <translation>%1 no se está instalando.</translation>
    </message>
    <message>
        <source>The files of %1 are being put into place already.</source>
        <translation>Los archivos de %1 ya se están colocando en su sitio.</translation>
    </message>
    <message>
        <source>%1 is not installed.</source>
        <translation>La región %1 no está instalada.</translation>
    </message>
    <message>
        <source>%1 is being installed; cancel that first.</source>
        <translation>%1 se está instalando; primero hay que cancelar la instalación.</translation>
    </message>
    <message>
        <source>The archive of %1 holds no map tiles.</source>
        <translation>El archivo comprimido de %1 no contiene teselas de mapa.</translation>
    </message>
    <message>
        <source>Files of %1 are missing after the install.</source>
        <translation>Faltan archivos de %1 después de la instalación.</translation>
    </message>
    <message>
        <source>The catalogue has no region &quot;%1&quot; any more.</source>
        <translation>El catálogo ya no contiene la región &quot;%1&quot;.</translation>
    </message>
    <message>
        <source>%1 could not be recorded: the content file cannot be written.</source>
        <translation>No se ha podido registrar %1: no se puede escribir el archivo de contenido.</translation>
    </message>
    <message>
        <source>The server sent %1 bytes for %2, but the catalogue says %3; nothing was changed. Is there a log-in page in between, or is the catalogue old?</source>
        <translation>El servidor ha enviado %1 bytes para %2, pero el catálogo indica %3; no se ha cambiado nada. ¿Hay una página de acceso de por medio o es antiguo el catálogo?</translation>
    </message>
    <message>
        <source>The archive of %1 is damaged or could not be unpacked; nothing was changed.</source>
        <translation>El archivo comprimido de %1 está dañado o no se ha podido descomprimir; no se ha cambiado nada.</translation>
    </message>
    <message>
        <source>The files of %1 could not be put into place. Is the disk full?</source>
        <translation>No se han podido colocar los archivos de %1 en su sitio. ¿Está lleno el almacenamiento?</translation>
    </message>
    <message>
        <source>The server refused to send the archive of %1.</source>
        <translation>El servidor se ha negado a enviar el archivo comprimido de %1.</translation>
    </message>
    <message>
        <source>The archive of %1 could not be downloaded: the server cannot be reached or does not have it.</source>
        <translation>No se ha podido descargar el archivo comprimido de %1: no se puede acceder al servidor o este no lo tiene.</translation>
    </message>
    <message>
        <source>The last install of %1 did not fail.</source>
        <translation>La última instalación de %1 no falló.</translation>
    </message>
</context>
<context>
    <name>RegionRow</name>
    <message>
        <source>Installed</source>
        <translation>Instalado</translation>
    </message>
    <message>
        <source>%1 on this device</source>
        <translation>%1 en este dispositivo</translation>
    </message>
    <message numerus="yes">
        <source>%n map(s) inside</source>
        <translation>
            <numerusform>contiene %n mapa</numerusform>
            <numerusform>contiene %n mapas</numerusform>
        </translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 de %2</translation>
    </message>
</context>
<context>
    <name>RegionSheet</name>
    <message>
        <source>Close</source>
        <translation>Cerrar</translation>
    </message>
</context>
<context>
    <name>RegionWords</name>
    <message>
        <source>Paused by you</source>
        <translation>En pausa a petición del usuario</translation>
    </message>
    <message>
        <source>Waiting for Wi-Fi</source>
        <translation>En espera de Wi‑Fi</translation>
    </message>
    <message>
        <source>Not installed</source>
        <translation>No instalado</translation>
    </message>
    <message>
        <source>Waiting for its turn</source>
        <translation>En cola</translation>
    </message>
    <message>
        <source>Downloading, %1</source>
        <translation>Descargando, %1</translation>
    </message>
    <message>
        <source>Downloading</source>
        <translation>Descargando</translation>
    </message>
    <message>
        <source>Downloading %1 %</source>
        <translation>Descargando: %1&#xa0;%</translation>
    </message>
    <message>
        <source>Downloading %1 %, %2 left</source>
        <translation>Descargando: %1&#xa0;%, quedan %2</translation>
    </message>
    <message>
        <source>Unpacking</source>
        <translation>Descomprimiendo</translation>
    </message>
    <message>
        <source>Unpacking %1 %</source>
        <translation>Descomprimiendo: %1&#xa0;%</translation>
    </message>
    <message>
        <source>Putting the files into place</source>
        <translation>Colocando los archivos</translation>
    </message>
    <message>
        <source>Finishing</source>
        <translation>Finalizando</translation>
    </message>
    <message>
        <source>Installed</source>
        <translation>Instalado</translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation>Cancelado</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1&#xa0;s</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1&#xa0;min</translation>
    </message>
    <message>
        <source>%1 h %2 min</source>
        <translation>%1&#xa0;h %2&#xa0;min</translation>
    </message>
    <message>
        <source>Waiting for a network</source>
        <translation>En espera de red</translation>
    </message>
</context>
<context>
    <name>RegionsPage</name>
    <message>
        <source>Maps to download</source>
        <translation>Mapas disponibles</translation>
    </message>
    <message>
        <source>All maps</source>
        <translation>Todos los mapas</translation>
    </message>
    <message>
        <source>Look for new maps</source>
        <translation>Buscar mapas nuevos</translation>
    </message>
    <message>
        <source>Search all maps</source>
        <translation>Buscar en todos los mapas</translation>
    </message>
    <message>
        <source>No map has this name</source>
        <translation>Ningún mapa tiene este nombre</translation>
    </message>
    <message>
        <source>Try fewer letters, or the name in another language.</source>
        <translation>Puede ayudar escribir menos letras, o el nombre en otro idioma.</translation>
    </message>
    <message>
        <source>No maps are known yet</source>
        <translation>Aún no se conoce ningún mapa</translation>
    </message>
    <message>
        <source>Fetch the list of maps from the server first. It is small; the maps themselves are downloaded one by one, as you choose.</source>
        <translation>Primero hay que obtener la lista de mapas del servidor. Ocupa poco; los mapas en sí se descargan uno a uno, según se elijan.</translation>
    </message>
    <message>
        <source>Fetch the list</source>
        <translation>Obtener la lista</translation>
    </message>
    <message>
        <source>All of %1</source>
        <translation>%1 al completo</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Detalles</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Instalar</translation>
    </message>
</context>
<context>
    <name>RemoteArchive</name>
    <message>
        <source>%1 is encrypted.</source>
        <translation>%1 está cifrado.</translation>
    </message>
    <message>
        <source>%1: out of memory.</source>
        <translation>%1: memoria insuficiente.</translation>
    </message>
    <message>
        <source>%1 cannot be listed: its server gives only whole files.</source>
        <translation>No se puede listar el contenido de %1: su servidor solo entrega archivos enteros.</translation>
    </message>
    <message>
        <source>%1 is damaged or no archive: %2.</source>
        <translation>%1 está dañado o no es un archivo comprimido: %2.</translation>
    </message>
    <message>
        <source>%1 does not tell how large its files are.</source>
        <translation>%1 no indica el tamaño de sus archivos.</translation>
    </message>
    <message>
        <source>%1 holds a file that may not be unpacked: &quot;%2&quot;.</source>
        <translation>%1 contiene un archivo que no se debe descomprimir: &quot;%2&quot;.</translation>
    </message>
</context>
<context>
    <name>RemoveDialog</name>
    <message>
        <source>Remove %1?</source>
        <translation>¿Eliminar %1?</translation>
    </message>
    <message>
        <source>This frees %1 (%2).</source>
        <translation>Esto libera %1 (%2).</translation>
    </message>
    <message numerus="yes">
        <source>%n file(s)</source>
        <translation>
            <numerusform>%n archivo</numerusform>
            <numerusform>%n archivos</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 (%2) stay, because other installed maps need them.</source>
        <translation>Se conservan %1 (%2), porque otros mapas instalados los necesitan.</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Eliminar</translation>
    </message>
    <message>
        <source>Looking at what this frees</source>
        <translation>Calculando el espacio que se libera</translation>
    </message>
</context>
<context>
    <name>SearchField</name>
    <message>
        <source>Clear the search</source>
        <translation>Borrar la búsqueda</translation>
    </message>
</context>
<context>
    <name>ServerDialog</name>
    <message>
        <source>Content server</source>
        <translation>Servidor de contenido</translation>
    </message>
    <message>
        <source>The address that maps are downloaded from.</source>
        <translation>La dirección desde la que se descargan los mapas.</translation>
    </message>
    <message>
        <source>This is no http address.</source>
        <translation>Esta no es una dirección http.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Use this server</source>
        <translation>Usar</translation>
    </message>
</context>
<context>
    <name>SetRemoval</name>
    <message>
        <source>Another file system is mounted at %1; it cannot be removed.</source>
        <translation>Hay otro sistema de archivos montado en %1; no se puede eliminar.</translation>
    </message>
    <message>
        <source>%1 cannot be moved to a safe place.</source>
        <translation>No se puede mover %1 a un lugar seguro.</translation>
    </message>
</context>
<context>
    <name>SettingRow</name>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>SettingsPage</name>
    <message>
        <source>As the system</source>
        <translation>Como el sistema</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Claro</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Oscuro</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Desactivado</translation>
    </message>
    <message>
        <source>Errors</source>
        <translation>Errores</translation>
    </message>
    <message>
        <source>Errors and warnings</source>
        <translation>Errores y advertencias</translation>
    </message>
    <message>
        <source>Information too</source>
        <translation>También información</translation>
    </message>
    <message>
        <source>Everything</source>
        <translation>Todo</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Desconocido</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Ajustes</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>Red</translation>
    </message>
    <message>
        <source>No network</source>
        <translation>Sin red</translation>
    </message>
    <message>
        <source>Connected over Wi-Fi or a cable</source>
        <translation>Conectado por Wi‑Fi o cable</translation>
    </message>
    <message>
        <source>Connected over a mobile network</source>
        <translation>Conectado por red móvil</translation>
    </message>
    <message>
        <source>Set by you</source>
        <translation>Indicado manualmente</translation>
    </message>
    <message>
        <source>Told by the system</source>
        <translation>Indicado por el sistema</translation>
    </message>
    <message>
        <source>The system does not tell</source>
        <translation>El sistema no lo indica</translation>
    </message>
    <message>
        <source>Download over mobile networks</source>
        <translation>Descargar por redes móviles</translation>
    </message>
    <message>
        <source>May cost money. Off: downloads wait for Wi-Fi.</source>
        <translation>Puede tener coste. Desactivado: las descargas esperan a la Wi‑Fi.</translation>
    </message>
    <message>
        <source>Set the network by hand</source>
        <translation>Indicar la red manualmente</translation>
    </message>
    <message>
        <source>For when the system does not know it.</source>
        <translation>Por si el sistema no la reconoce.</translation>
    </message>
    <message>
        <source>There is a network</source>
        <translation>Hay red</translation>
    </message>
    <message>
        <source>It is Wi-Fi or a cable</source>
        <translation>Es Wi‑Fi o cable</translation>
    </message>
    <message>
        <source>On this device</source>
        <translation>En este dispositivo</translation>
    </message>
    <message>
        <source>Installed maps</source>
        <translation>Mapas instalados</translation>
    </message>
    <message numerus="yes">
        <source>%n map(s)</source>
        <translation>
            <numerusform>%n mapa</numerusform>
            <numerusform>%n mapas</numerusform>
        </translation>
    </message>
    <message>
        <source>Free space</source>
        <translation>Espacio libre</translation>
    </message>
    <message>
        <source>Version of the maps</source>
        <translation>Versión de los mapas</translation>
    </message>
    <message>
        <source>Version of the map objects</source>
        <translation>Versión de los objetos de mapa</translation>
    </message>
    <message>
        <source>City index</source>
        <translation>Índice de ciudades</translation>
    </message>
    <message numerus="yes">
        <source>%n city package(s)</source>
        <translation>
            <numerusform>%n paquete de ciudades</numerusform>
            <numerusform>%n paquetes de ciudades</numerusform>
        </translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Carpeta</translation>
    </message>
    <message>
        <source>Server</source>
        <translation>Servidor</translation>
    </message>
    <message>
        <source>Content server</source>
        <translation>Servidor de contenido</translation>
    </message>
    <message>
        <source>List of maps</source>
        <translation>Lista de mapas</translation>
    </message>
    <message numerus="yes">
        <source>%n map(s) to choose from</source>
        <translation>
            <numerusform>%n mapa para elegir</numerusform>
            <numerusform>%n mapas para elegir</numerusform>
        </translation>
    </message>
    <message>
        <source>The server has newer maps: version %1</source>
        <translation>El servidor tiene mapas más recientes: versión %1</translation>
    </message>
    <message>
        <source>Stop looking</source>
        <translation>Detener la búsqueda</translation>
    </message>
    <message>
        <source>Look for new maps</source>
        <translation>Buscar mapas nuevos</translation>
    </message>
    <message>
        <source>This app</source>
        <translation>Esta aplicación</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Apariencia</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>Registro</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Versión</translation>
    </message>
    <message>
        <source>Update of all maps</source>
        <translation>Actualización de todos los mapas</translation>
    </message>
    <message>
        <source>Under way</source>
        <translation>En curso</translation>
    </message>
    <message>
        <source>Version %1 is on this device</source>
        <translation>La versión %1 está en este dispositivo</translation>
    </message>
    <message>
        <source>Version %1 is being prepared</source>
        <translation>Se está preparando la versión %1</translation>
    </message>
    <message>
        <source>No newer maps are known</source>
        <translation>No se conocen mapas más nuevos</translation>
    </message>
</context>
<context>
    <name>SwapCheck</name>
    <message>
        <source>An exchange of the map data was cut short. Start the program again first.</source>
        <translation>Se interrumpió un cambio de los datos de mapas. Primero hay que reiniciar el programa.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot stand behind the name of a data set.</source>
        <translation>&quot;%1&quot; no puede ir detrás del nombre de un conjunto de datos.</translation>
    </message>
    <message>
        <source>The path %1 has a blank or another character that the update cannot handle. Move the map data to a folder with a plain name.</source>
        <translation>La ruta %1 tiene un espacio u otro carácter que la actualización no admite. Hay que mover los datos de mapas a una carpeta con un nombre sencillo.</translation>
    </message>
    <message>
        <source>There is no prepared map data.</source>
        <translation>No hay datos de mapas preparados.</translation>
    </message>
    <message>
        <source>There is no backup to go back to.</source>
        <translation>No hay ninguna copia de seguridad a la que volver.</translation>
    </message>
    <message>
        <source>The backup of an earlier update is still there (%1). Remove it or go back to it first.</source>
        <translation>Todavía existe la copia de seguridad de una actualización anterior (%1). Primero hay que eliminarla o volver a ella.</translation>
    </message>
    <message>
        <source>Another update is being prepared (%1). Give it up first.</source>
        <translation>Se está preparando otra actualización (%1). Primero hay que descartarla.</translation>
    </message>
    <message>
        <source>The folder %1 is missing.</source>
        <translation>Falta la carpeta %1.</translation>
    </message>
    <message>
        <source>%1 is a link or a file; it must be a folder.</source>
        <translation>%1 es un enlace o un archivo; debe ser una carpeta.</translation>
    </message>
    <message>
        <source>Another file system is mounted at %1; it must be a folder of the file system around it.</source>
        <translation>Hay otro sistema de archivos montado en %1; debe ser una carpeta del sistema de archivos que lo rodea.</translation>
    </message>
    <message>
        <source>%1 is in the way of the voice data.</source>
        <translation>%1 ocupa el lugar de los datos de voz.</translation>
    </message>
    <message>
        <source>The folder %1 is write-protected.</source>
        <translation>La carpeta %1 está protegida contra escritura.</translation>
    </message>
    <message>
        <source>There is no space left at %1.</source>
        <translation>No queda espacio en %1.</translation>
    </message>
    <message>
        <source>%1 is missing or damaged.</source>
        <translation>%1 falta o está dañado.</translation>
    </message>
    <message>
        <source>%1 is missing, damaged, or lists no regions.</source>
        <translation>%1 falta, está dañado o no contiene regiones.</translation>
    </message>
</context>
<context>
    <name>SwapJournal</name>
    <message>
        <source>%1 cannot be written (%2).</source>
        <translation>No se puede escribir %1 (%2).</translation>
    </message>
    <message>
        <source>The note %1 cannot be read.</source>
        <translation>No se puede leer la nota %1.</translation>
    </message>
    <message>
        <source>The note %1 is damaged or was not written by this program.</source>
        <translation>La nota %1 está dañada o no la ha escrito este programa.</translation>
    </message>
    <message>
        <source>The note %1 was written by a later version of this program.</source>
        <translation>La nota %1 la ha escrito una versión posterior de este programa.</translation>
    </message>
    <message>
        <source>The note %1 is damaged.</source>
        <translation>La nota %1 está dañada.</translation>
    </message>
    <message>
        <source>%1 cannot be removed (%2).</source>
        <translation>No se puede eliminar %1 (%2).</translation>
    </message>
</context>
<context>
    <name>TransfersPage</name>
    <message>
        <source>There is no network. Downloads go on as soon as there is one.</source>
        <translation>No hay red. Las descargas continuarán en cuanto haya una.</translation>
    </message>
    <message>
        <source>Downloads wait for Wi-Fi.</source>
        <translation>Las descargas esperan a la Wi‑Fi.</translation>
    </message>
    <message>
        <source>Transfers</source>
        <translation>Descargas</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Reanudar</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pausar</translation>
    </message>
    <message>
        <source>Use the mobile network</source>
        <translation>Usar la red móvil</translation>
    </message>
    <message>
        <source>Try %1 again</source>
        <translation>Reintentar %1</translation>
    </message>
    <message>
        <source>Cancel %1</source>
        <translation>Cancelar %1</translation>
    </message>
    <message>
        <source>Nothing is being transferred</source>
        <translation>No hay descargas en curso</translation>
    </message>
    <message>
        <source>Maps that you choose to install are shown here until they are ready.</source>
        <translation>Aquí se muestran los mapas elegidos para instalar hasta que estén listos.</translation>
    </message>
    <message>
        <source>Choose maps</source>
        <translation>Elegir mapas</translation>
    </message>
    <message>
        <source>Remove %1 from the list</source>
        <translation>Quitar %1 de la lista</translation>
    </message>
    <message>
        <source>Clear ended transfers</source>
        <translation>Borrar las descargas terminadas</translation>
    </message>
</context>
<context>
    <name>UpdateBanner</name>
    <message>
        <source>The server has newer maps: version %1.</source>
        <translation>El servidor tiene mapas más nuevos: versión %1.</translation>
    </message>
    <message>
        <source>Show the update</source>
        <translation>Mostrar la actualización</translation>
    </message>
    <message>
        <source>Update all maps</source>
        <translation>Actualizar todos los mapas</translation>
    </message>
</context>
<context>
    <name>UpdateInspection</name>
    <message>
        <source>%1 names no usable map version.</source>
        <translation>%1 no indica ninguna versión de mapas utilizable.</translation>
    </message>
    <message>
        <source>%1 cannot be written.</source>
        <translation>No se puede escribir %1.</translation>
    </message>
    <message>
        <source>The server&apos;s %1 is damaged or lists no regions.</source>
        <translation>El archivo %1 del servidor está dañado o no contiene regiones.</translation>
    </message>
    <message>
        <source>The catalogue gives no usable address for %1.</source>
        <translation>El catálogo no indica ninguna dirección utilizable para %1.</translation>
    </message>
    <message>
        <source>Interrupted.</source>
        <translation>Interrumpido.</translation>
    </message>
    <message>
        <source>The archive of %1 holds no map tiles.</source>
        <translation>El archivo comprimido de %1 no contiene teselas de mapa.</translation>
    </message>
</context>
<context>
    <name>UpdatePage</name>
    <message>
        <source>The update waits</source>
        <translation>La actualización espera</translation>
    </message>
    <message>
        <source>Going back to the old maps</source>
        <translation>Volviendo a los mapas antiguos</translation>
    </message>
    <message>
        <source>The maps are being updated</source>
        <translation>Se están actualizando los mapas</translation>
    </message>
    <message>
        <source>All maps are updated</source>
        <translation>Todos los mapas están actualizados</translation>
    </message>
    <message>
        <source>The update could not be finished</source>
        <translation>No se pudo terminar la actualización</translation>
    </message>
    <message>
        <source>Newer maps are ready</source>
        <translation>Hay mapas más nuevos listos</translation>
    </message>
    <message>
        <source>An update is not finished</source>
        <translation>Una actualización no ha terminado</translation>
    </message>
    <message>
        <source>There are newer maps</source>
        <translation>Hay mapas más nuevos</translation>
    </message>
    <message>
        <source>No newer maps are known</source>
        <translation>No se conocen mapas más nuevos</translation>
    </message>
    <message>
        <source>There is no network that it may use. It goes on by itself as soon as there is one.</source>
        <translation>No hay ninguna red que pueda usar. Continuará sola en cuanto la haya.</translation>
    </message>
    <message>
        <source>Asking the server for its version</source>
        <translation>Consultando la versión del servidor</translation>
    </message>
    <message>
        <source>Fetching the list of maps of version %1</source>
        <translation>Obteniendo la lista de mapas de la versión %1</translation>
    </message>
    <message>
        <source>Preparing version %1</source>
        <translation>Preparando la versión %1</translation>
    </message>
    <message>
        <source>Preparing %1</source>
        <translation>Preparando %1</translation>
    </message>
    <message>
        <source>Putting version %1 in use</source>
        <translation>Poniendo en uso la versión %1</translation>
    </message>
    <message>
        <source>Please wait</source>
        <translation>Un momento, por favor</translation>
    </message>
    <message>
        <source>Version %1 has taken the place of version %2.</source>
        <translation>La versión %1 ha sustituido a la versión %2.</translation>
    </message>
    <message>
        <source>The maps are of the newest version.</source>
        <translation>Los mapas son de la versión más nueva.</translation>
    </message>
    <message>
        <source>Version %1 does not have these installed maps any more:</source>
        <translation>La versión %1 ya no tiene estos mapas instalados:</translation>
    </message>
    <message>
        <source>The maps of version %1 are on this device. They can be put in use without a download.</source>
        <translation>Los mapas de la versión %1 están en este dispositivo. Pueden usarse sin descargar nada.</translation>
    </message>
    <message>
        <source>The update to version %1 goes on where it ended. The maps in use stay as they are until it is done.</source>
        <translation>La actualización a la versión %1 continúa donde se quedó. Los mapas en uso no cambian hasta que termine.</translation>
    </message>
    <message>
        <source>All installed maps are updated together. The new ones are downloaded beside those in use, which can be gone back to afterwards.</source>
        <translation>Todos los mapas instalados se actualizan juntos. Los nuevos se descargan junto a los que están en uso, a los que se puede volver después.</translation>
    </message>
    <message>
        <source>The server tells whether there are any.</source>
        <translation>El servidor indica si los hay.</translation>
    </message>
    <message>
        <source>Update of all maps</source>
        <translation>Actualización de todos los mapas</translation>
    </message>
    <message>
        <source>If you go on without them, they stay only in the old maps.</source>
        <translation>Si continúa sin ellos, solo quedarán en los mapas antiguos.</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 de %2</translation>
    </message>
    <message>
        <source>Go on without them</source>
        <translation>Continuar sin ellos</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Reintentar</translation>
    </message>
    <message>
        <source>Update all maps</source>
        <translation>Actualizar todos los mapas</translation>
    </message>
    <message>
        <source>Use version %1</source>
        <translation>Usar la versión %1</translation>
    </message>
    <message>
        <source>Go on</source>
        <translation>Continuar</translation>
    </message>
    <message>
        <source>Use the mobile network</source>
        <translation>Usar la red móvil</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Detener</translation>
    </message>
    <message>
        <source>Remove the newer maps</source>
        <translation>Eliminar los mapas más nuevos</translation>
    </message>
    <message>
        <source>Give up</source>
        <translation>Abandonar</translation>
    </message>
    <message>
        <source>Look for new maps</source>
        <translation>Buscar mapas nuevos</translation>
    </message>
    <message>
        <source>Versions</source>
        <translation>Versiones</translation>
    </message>
    <message>
        <source>In use</source>
        <translation>En uso</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Ninguna</translation>
    </message>
    <message>
        <source>Newer</source>
        <translation>Más nueva</translation>
    </message>
    <message>
        <source>On the server</source>
        <translation>En el servidor</translation>
    </message>
    <message>
        <source>Free space</source>
        <translation>Espacio libre</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Desconocido</translation>
    </message>
    <message>
        <source>Remove the newer maps?</source>
        <translation>¿Eliminar los mapas más nuevos?</translation>
    </message>
    <message>
        <source>Give the update up?</source>
        <translation>¿Abandonar la actualización?</translation>
    </message>
    <message>
        <source>What was downloaded of version %1 is removed. The maps in use stay as they are.</source>
        <translation>Lo descargado de la versión %1 se elimina. Los mapas en uso no cambian.</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Eliminar</translation>
    </message>
</context>
<context>
    <name>UpdateSpace</name>
    <message>
        <source>The update needs up to %1 below %2 beside the maps in use, but only %3 are free.</source>
        <translation>La actualización necesita hasta %1 en %2 además de los mapas en uso, pero solo hay %3 libres.</translation>
    </message>
</context>
<context>
    <name>VersionProbe</name>
    <message>
        <source>%1 cannot be reached, or it is no map server.</source>
        <translation>No se puede acceder a %1, o no es un servidor de mapas.</translation>
    </message>
    <message>
        <source>%1 names no usable map version.</source>
        <translation>%1 no indica ninguna versión de mapas utilizable.</translation>
    </message>
</context>
</TS>
