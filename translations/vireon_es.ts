<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es">
<context>
    <name>AnalysisInputs</name>
    <message>
        <source>the input table</source>
        <translation>la tabla de entrada</translation>
    </message>
    <message>
        <source>the starting collection</source>
        <translation>la colección de partida</translation>
    </message>
    <message>
        <source>the workspace file</source>
        <translation>el archivo de espacio de trabajo</translation>
    </message>
    <message>
        <source>%1 is %2 of this analysis, and an output never replaces a file the analysis reads.</source>
        <translation>%1 es %2 de este análisis, y una salida nunca reemplaza un archivo que el análisis lee.</translation>
    </message>
    <message>
        <source>%1 is the same file as %2, %3 of this analysis, and an output never replaces a file the analysis reads.</source>
        <translation>%1 es el mismo archivo que %2, %3 de este análisis, y una salida nunca reemplaza un archivo que el análisis lee.</translation>
    </message>
</context>
<context>
    <name>QCommandLineParser</name>
    <message>
        <source>Displays help on commandline options.</source>
        <translation>Muestra la ayuda sobre las opciones de la línea de órdenes.</translation>
    </message>
    <message>
        <source>Displays help including Qt specific options.</source>
        <translation>Muestra la ayuda, incluidas las opciones propias de Qt.</translation>
    </message>
</context>
<context>
    <name>TableChecks</name>
    <message>
        <source>nothing</source>
        <translation>nada</translation>
    </message>
    <message>
        <source>The starting collection&apos;s header differs from the input&apos;s in column %1: %2 instead of %3.</source>
        <translation>El encabezado de la colección de partida difiere del de la entrada en la columna %1: %2 en lugar de %3.</translation>
    </message>
</context>
<context>
    <name>TableMemory</name>
    <message>
        <source>%1 MB</source>
        <translation>%1 MB</translation>
    </message>
    <message>
        <source>%1 GB</source>
        <translation>%1 GB</translation>
    </message>
    <message>
        <source>is too large to read: its %1 hold %2 fields, which would take about %3 of memory, and Vireon reads tables of up to %4</source>
        <translation>es demasiado grande para leerlo: sus %1 contienen %2 campos, que ocuparían unos %3 de memoria, y Vireon lee tablas de hasta %4</translation>
    </message>
</context>
<context>
    <name>TableNotes</name>
    <message>
        <source>1 line of the file was left out because its number of fields differs from the header row: line %1.</source>
        <translation>Se omitió 1 línea del archivo porque su número de campos difiere del de la fila de encabezado: línea %1.</translation>
    </message>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>y %n más</numerusform>
            <numerusform>y %n más</numerusform>
        </translation>
    </message>
    <message>
        <source>and</source>
        <translation>y</translation>
    </message>
    <message numerus="yes">
        <source>%n lines of the file were left out because their number of fields differs from the header row: lines %1.</source>
        <translation>
            <numerusform>Se omitió %n línea del archivo porque su número de campos difiere del de la fila de encabezado: línea %1.</numerusform>
            <numerusform>Se omitieron %n líneas del archivo porque su número de campos difiere del de la fila de encabezado: líneas %1.</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 (columns %2)</source>
        <translation>%1 (columnas %2)</translation>
    </message>
    <message>
        <source>A marker&apos;s name returns after other markers&apos; columns, and the alleles of all its columns are counted as one marker: %1.</source>
        <translation>El nombre de un marcador reaparece tras columnas de otros marcadores, y los alelos de todas sus columnas se cuentan como un solo marcador: %1.</translation>
    </message>
    <message numerus="yes">
        <source>%n markers&apos; names return after other markers&apos; columns, and the alleles of all columns of one name are counted as one marker: %1.</source>
        <translation>
            <numerusform>El nombre de %n marcador reaparece tras columnas de otros marcadores, y los alelos de todas las columnas de un mismo nombre se cuentan como un solo marcador: %1.</numerusform>
            <numerusform>Los nombres de %n marcadores reaparecen tras columnas de otros marcadores, y los alelos de todas las columnas de un mismo nombre se cuentan como un solo marcador: %1.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n accession names stand in more than one row: %1.</source>
        <translation>
            <numerusform>%n nombre de accesión figura en más de una fila: %1.</numerusform>
            <numerusform>%n nombres de accesión figuran en más de una fila: %1.</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 (rows %2)</source>
        <translation>%1 (filas %2)</translation>
    </message>
    <message>
        <source>An accession name stands in more than one row: %1.</source>
        <translation>Un nombre de accesión figura en más de una fila: %1.</translation>
    </message>
</context>
<context>
    <name>TableReading</name>
    <message>
        <source>Reading %1...</source>
        <translation>Leyendo %1...</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Reading</source>
        <translation>Lectura</translation>
    </message>
</context>
<context>
    <name>TextFile</name>
    <message>
        <source>This file is not UTF-8; it was read as Windows-1252.</source>
        <translation>Este archivo no está en UTF-8; se leyó como Windows-1252.</translation>
    </message>
    <message>
        <source>is a folder</source>
        <translation>es una carpeta</translation>
    </message>
    <message>
        <source>not a regular file</source>
        <translation>no es un archivo normal</translation>
    </message>
    <message>
        <source>is too large: %1 MB, and Vireon reads files of up to %2 MB</source>
        <translation>es demasiado grande: %1 MB, y Vireon lee archivos de hasta %2 MB</translation>
    </message>
    <message>
        <source>no such file</source>
        <translation>no existe</translation>
    </message>
    <message>
        <source>cannot be read</source>
        <translation>no se puede leer</translation>
    </message>
    <message>
        <source>This file is UTF-16 (little-endian) without a byte-order mark; it was read that way.</source>
        <translation>Este archivo está en UTF-16 (little-endian) sin marca de orden de bytes; se leyó así.</translation>
    </message>
    <message>
        <source>This file is UTF-16 (big-endian) without a byte-order mark; it was read that way.</source>
        <translation>Este archivo está en UTF-16 (big-endian) sin marca de orden de bytes; se leyó así.</translation>
    </message>
    <message>
        <source>This file is UTF-32 (little-endian) without a byte-order mark; it was read that way.</source>
        <translation>Este archivo está en UTF-32 (little-endian) sin marca de orden de bytes; se leyó así.</translation>
    </message>
    <message>
        <source>This file is UTF-32 (big-endian) without a byte-order mark; it was read that way.</source>
        <translation>Este archivo está en UTF-32 (big-endian) sin marca de orden de bytes; se leyó así.</translation>
    </message>
    <message>
        <source>is not a text file: it holds NUL bytes</source>
        <translation>no es un archivo de texto: contiene bytes NUL</translation>
    </message>
    <message>
        <source>looks like %1 without a byte-order mark, but is not valid %1</source>
        <translation>parece %1 sin marca de orden de bytes, pero no es %1 válido</translation>
    </message>
    <message>
        <source>is too large: more than %1 MB, and Vireon reads files of up to %1 MB</source>
        <translation>es demasiado grande: más de %1 MB, y Vireon lee archivos de hasta %1 MB</translation>
    </message>
    <message>
        <source>is too large to read in the memory available</source>
        <translation>es demasiado grande para leerlo con la memoria disponible</translation>
    </message>
</context>
<context>
    <name>XAnalysisFile</name>
    <message>
        <source>Quit</source>
        <translation>Salir</translation>
    </message>
    <message>
        <source>Export the analysis before quitting?</source>
        <translation>¿Exportar el análisis antes de salir?</translation>
    </message>
    <message>
        <source>Export...</source>
        <translation>Exportar...</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Descartar</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
</context>
<context>
    <name>XCli</name>
    <message>
        <source>vireon-cli: %1</source>
        <translation>vireon-cli: %1</translation>
    </message>
    <message>
        <source>Try &apos;vireon-cli --help&apos; for more information.</source>
        <translation>Pruebe &apos;vireon-cli --help&apos; para más información.</translation>
    </message>
    <message>
        <source>%1 of the %2 lines below the header row were left out, more than half, so the table is refused; --allow-left-out searches the %3 that were read.</source>
        <translation>Se omitieron %1 de las %2 líneas bajo la fila de encabezado, más de la mitad, así que la tabla se rechaza; --allow-left-out busca en las %3 que se leyeron.</translation>
    </message>
    <message>
        <source>%1: cannot be written: %2</source>
        <translation>%1: no se puede escribir: %2</translation>
    </message>
    <message>
        <source>Selects core collections: for each percentage 1 to 100 of the alleles of INPUT, the smallest set of accessions found that holds that share.</source>
        <translation>Selecciona colecciones núcleo: para cada porcentaje de 1 a 100 de los alelos de ENTRADA, el menor conjunto de accesiones encontrado que conserva esa proporción.</translation>
    </message>
    <message>
        <source>starting collection</source>
        <translation>colección de partida</translation>
    </message>
    <message>
        <source>FILE</source>
        <translation>ARCHIVO</translation>
    </message>
    <message>
        <source>attempts per core size (default 10, at least 1)</source>
        <translation>intentos por tamaño de núcleo (10 por omisión, al menos 1)</translation>
    </message>
    <message>
        <source>N</source>
        <translation>N</translation>
    </message>
    <message>
        <source>random seed; 0 takes it from the clock (default 0)</source>
        <translation>semilla aleatoria; 0 la toma del reloj (0 por omisión)</translation>
    </message>
    <message>
        <source>write the whole analysis as a workspace file, slider at --percent</source>
        <translation>escribe el análisis completo como archivo de espacio de trabajo, con el control deslizante en --percent</translation>
    </message>
    <message>
        <source>write the core of --percent (a name ending in .xls or .xlsx as a workbook, any other as comma-separated text)</source>
        <translation>escribe el núcleo de --percent (un nombre terminado en .xls o .xlsx como libro de cálculo, cualquier otro como texto separado por comas)</translation>
    </message>
    <message>
        <source>the core that --output writes (1..100, default 100)</source>
        <translation>el núcleo que escribe --output (1..100, 100 por omisión)</translation>
    </message>
    <message>
        <source>P</source>
        <translation>P</translation>
    </message>
    <message>
        <source>print the result&apos;s text form (the 100 lines of a workspace&apos;s result section) instead of the summary</source>
        <translation>imprime el resultado como texto (las 100 líneas de la sección de resultado de un espacio de trabajo) en lugar del resumen</translation>
    </message>
    <message>
        <source>no progress on stderr</source>
        <translation>sin progreso en stderr</translation>
    </message>
    <message>
        <source>threads that search (default 0: one per core); any count gives the same result</source>
        <translation>hilos que buscan (0 por omisión: uno por núcleo de procesador); cualquier número da el mismo resultado</translation>
    </message>
    <message>
        <source>reproducible (default): the randomised search, repeatable from its seed; exact: the fewest accessions for each percentage, proven minimal or with a lower bound</source>
        <translation>reproducible (por omisión): la búsqueda aleatoria, repetible a partir de su semilla; exact: el menor número de accesiones para cada porcentaje, con mínimo demostrado o con una cota inferior</translation>
    </message>
    <message>
        <source>MODE</source>
        <translation>MODO</translation>
    </message>
    <message>
        <source>seconds the exact search may spend on its proofs (default 60)</source>
        <translation>segundos que la búsqueda exacta puede dedicar a sus pruebas (60 por omisión)</translation>
    </message>
    <message>
        <source>SECONDS</source>
        <translation>SEGUNDOS</translation>
    </message>
    <message>
        <source>search a .csv table even when more than half of its lines were left out (their number of fields differs from the header row&apos;s)</source>
        <translation>busca en una tabla .csv aunque se haya omitido más de la mitad de sus líneas (su número de campos difiere del de la fila de encabezado)</translation>
    </message>
    <message>
        <source>INPUT</source>
        <translation>ENTRADA</translation>
    </message>
    <message>
        <source>the table of accessions (.csv, .xls, .xlsx or .ods), or a workspace file (.ccw) to print and write from without a search</source>
        <translation>la tabla de accesiones (.csv, .xls, .xlsx u .ods), o un archivo de espacio de trabajo (.ccw) que mostrar y del que escribir sin búsqueda</translation>
    </message>
    <message>
        <source>no INPUT given.</source>
        <translation>no se ha indicado ENTRADA.</translation>
    </message>
    <message>
        <source>only one INPUT may be given.</source>
        <translation>solo se puede indicar una ENTRADA.</translation>
    </message>
    <message>
        <source>--iterations needs a whole number of at least 1.</source>
        <translation>--iterations necesita un número entero de al menos 1.</translation>
    </message>
    <message>
        <source>--seed needs a whole number.</source>
        <translation>--seed necesita un número entero.</translation>
    </message>
    <message>
        <source>--threads needs a whole number of at least 0.</source>
        <translation>--threads necesita un número entero de al menos 0.</translation>
    </message>
    <message>
        <source>--percent needs a whole number from 1 to 100.</source>
        <translation>--percent necesita un número entero de 1 a 100.</translation>
    </message>
    <message>
        <source>--search is reproducible or exact.</source>
        <translation>--search es reproducible o exact.</translation>
    </message>
    <message>
        <source>--budget needs a whole number of seconds, 0 or more.</source>
        <translation>--budget necesita un número entero de segundos, 0 o más.</translation>
    </message>
    <message>
        <source>--output and --workspace name the same file, %1.</source>
        <translation>--output y --workspace indican el mismo archivo, %1.</translation>
    </message>
    <message>
        <source>%1 cannot be given with a workspace file: it holds its analysis already.</source>
        <translation>%1 no se puede indicar con un archivo de espacio de trabajo: ya contiene su análisis.</translation>
    </message>
</context>
<context>
    <name>XCore</name>
    <message>
        <source>Invalid value in csv.</source>
        <translation>Valor no válido en el csv.</translation>
    </message>
    <message>
        <source>Error while allocating memory.</source>
        <translation>Error al reservar memoria.</translation>
    </message>
    <message>
        <source>The number of iterations must be at least 1.</source>
        <translation>El número de iteraciones debe ser al menos 1.</translation>
    </message>
    <message>
        <source>The input table has no accessions.</source>
        <translation>La tabla de entrada no tiene accesiones.</translation>
    </message>
    <message>
        <source>Different headers.</source>
        <translation>Encabezados diferentes.</translation>
    </message>
</context>
<context>
    <name>XCoreReport</name>
    <message numerus="yes">
        <source>%n accession</source>
        <translation>
            <numerusform>%n accesión</numerusform>
            <numerusform>%n accesiones</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n accessions</source>
        <translation>
            <numerusform>%n accesión</numerusform>
            <numerusform>%n accesiones</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n accession (%1 in the starting collection)</source>
        <translation>
            <numerusform>%n accesión (%1 en la colección de partida)</numerusform>
            <numerusform>%n accesiones (%1 en la colección de partida)</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n accessions (%1 in the starting collection)</source>
        <translation>
            <numerusform>%n accesión (%1 en la colección de partida)</numerusform>
            <numerusform>%n accesiones (%1 en la colección de partida)</numerusform>
        </translation>
    </message>
    <message>
        <source>a cell of the tables is not an allele</source>
        <translation>una celda de las tablas no es un alelo</translation>
    </message>
    <message>
        <source>the search reports %1 of %2 alleles</source>
        <translation>la búsqueda indica %1 de %2 alelos</translation>
    </message>
    <message>
        <source>they hold %1 (%2 %)</source>
        <translation>contienen %1 (%2 %)</translation>
    </message>
    <message>
        <source>proven smallest</source>
        <translation>mínimo demostrado</translation>
    </message>
    <message>
        <source>not proven smallest</source>
        <translation>mínimo no demostrado</translation>
    </message>
    <message numerus="yes">
        <source>at least %n accession is needed</source>
        <translation>
            <numerusform>se necesita al menos %n accesión</numerusform>
            <numerusform>se necesitan al menos %n accesiones</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>at least %n accessions are needed</source>
        <translation>
            <numerusform>se necesita al menos %n accesión</numerusform>
            <numerusform>se necesitan al menos %n accesiones</numerusform>
        </translation>
    </message>
    <message>
        <source>they hold %1 of %2 alleles (%3 %)</source>
        <translation>contienen %1 de %2 alelos (%3 %)</translation>
    </message>
    <message>
        <source>Exact search</source>
        <translation>Búsqueda exacta</translation>
    </message>
    <message numerus="yes">
        <source>%1 of %n cores proven smallest</source>
        <translation>
            <numerusform>%1 de %n núcleo con mínimo demostrado</numerusform>
            <numerusform>%1 de %n núcleos con mínimo demostrado</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>Reproducible search</source>
        <translation>Búsqueda reproducible</translation>
    </message>
    <message>
        <source>seed %1</source>
        <translation>semilla %1</translation>
    </message>
    <message numerus="yes">
        <source>%n iteration</source>
        <translation>
            <numerusform>%n iteración</numerusform>
            <numerusform>%n iteraciones</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n iterations</source>
        <translation>
            <numerusform>%n iteración</numerusform>
            <numerusform>%n iteraciones</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>XCoreSummary</name>
    <message>
        <source>percent	accessions	alleles	recounted</source>
        <translation>porcentaje	accesiones	alelos	recontados</translation>
    </message>
    <message>
        <source>Total alleles: %1; seed: %2</source>
        <translation>Alelos en total: %1; semilla: %2</translation>
    </message>
    <message>
        <source>%1 (no header)</source>
        <translation>%1 (sin encabezado)</translation>
    </message>
    <message>
        <source>start row %1, column %2: &quot;%3&quot;</source>
        <translation>fila %1 de la colección de partida, columna %2: &quot;%3&quot;</translation>
    </message>
    <message>
        <source>input row %1, column %2: &quot;%3&quot;</source>
        <translation>fila %1 de la entrada, columna %2: &quot;%3&quot;</translation>
    </message>
    <message>
        <source>percent	accessions	alleles	size</source>
        <translation>porcentaje	accesiones	alelos	tamaño</translation>
    </message>
    <message>
        <source>minimal</source>
        <translation>mínimo</translation>
    </message>
    <message>
        <source>Total alleles: %1; (marker, 0) pairs left out: %2</source>
        <translation>Alelos en total: %1; pares (marcador, 0) omitidos: %2</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>not recorded</source>
        <translation>no registrado</translation>
    </message>
    <message numerus="yes">
        <source>Proven minimal: %1 of %n entries; time: %2</source>
        <translation>
            <numerusform>Mínimo demostrado: %1 de %n entrada; tiempo: %2</numerusform>
            <numerusform>Mínimo demostrado: %1 de %n entradas; tiempo: %2</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>XCsv</name>
    <message>
        <source>This file separates its fields with semicolons; it was read that way.</source>
        <translation>Este archivo separa sus campos con punto y coma; se leyó así.</translation>
    </message>
    <message>
        <source>This file separates its fields with tabs; it was read that way.</source>
        <translation>Este archivo separa sus campos con tabuladores; se leyó así.</translation>
    </message>
</context>
<context>
    <name>XCsvEditor</name>
    <message>
        <source>Find</source>
        <translation>Buscar</translation>
    </message>
    <message>
        <source>Click on the button to find and correct errors.</source>
        <translation>Pulse el botón para encontrar y corregir errores.</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Cerrar</translation>
    </message>
    <message>
        <source>Insert row before selection</source>
        <translation>Insertar fila antes de la selección</translation>
    </message>
    <message>
        <source>Insert row after selection</source>
        <translation>Insertar fila después de la selección</translation>
    </message>
    <message>
        <source>Remove selected row(s).</source>
        <translation>Eliminar las filas seleccionadas.</translation>
    </message>
    <message>
        <source>Insert column before selection</source>
        <translation>Insertar columna antes de la selección</translation>
    </message>
    <message>
        <source>Insert column after selection</source>
        <translation>Insertar columna después de la selección</translation>
    </message>
    <message>
        <source>Remove selected column(s)</source>
        <translation>Eliminar las columnas seleccionadas</translation>
    </message>
</context>
<context>
    <name>XCsvSelectionPage</name>
    <message>
        <source>There are errors in the table. Click on the Edit button to fix them.</source>
        <translation>Hay errores en la tabla. Pulse el botón Editar para corregirlos.</translation>
    </message>
    <message>
        <source>Click on the Edit button to make changes to the table.</source>
        <translation>Pulse el botón Editar para hacer cambios en la tabla.</translation>
    </message>
    <message>
        <source>Browse...</source>
        <translation>Examinar...</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Editar</translation>
    </message>
    <message>
        <source>Start from an existing core collection</source>
        <translation>Partir de una colección núcleo existente</translation>
    </message>
    <message>
        <source>Select file</source>
        <translation>Seleccionar archivo</translation>
    </message>
    <message>
        <source>Preview and edit the input spreadsheet</source>
        <translation>Vista previa y edición de la tabla de entrada</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>Spreadsheets %1</source>
        <translation>Hojas de cálculo %1</translation>
    </message>
</context>
<context>
    <name>XCsvTableModel</name>
    <message>
        <source>In the starting collection</source>
        <translation>En la colección de partida</translation>
    </message>
</context>
<context>
    <name>XCsvTableWidget</name>
    <message>
        <source>Rename column header</source>
        <translation>Renombrar encabezado de columna</translation>
    </message>
    <message>
        <source>Rename row header</source>
        <translation>Renombrar encabezado de fila</translation>
    </message>
    <message>
        <source>Select a new text for header</source>
        <translation>Escriba un nuevo texto para el encabezado</translation>
    </message>
</context>
<context>
    <name>XExactCore</name>
    <message>
        <source>The input table has no accessions.</source>
        <translation>La tabla de entrada no tiene accesiones.</translation>
    </message>
    <message>
        <source>Different headers.</source>
        <translation>Encabezados diferentes.</translation>
    </message>
</context>
<context>
    <name>XFirstPage</name>
    <message>
        <source>Input from an existing file</source>
        <translation>Entrada desde un archivo existente</translation>
    </message>
    <message>
        <source>Input data manually</source>
        <translation>Introducir los datos a mano</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Inicio</translation>
    </message>
    <message>
        <source>Select the action you want to perform</source>
        <translation>Elija lo que desea hacer</translation>
    </message>
</context>
<context>
    <name>XGraphWidget</name>
    <message>
        <source>Save Graph As...</source>
        <translation>Guardar gráfico como...</translation>
    </message>
    <message>
        <source>reported by the search</source>
        <translation>indicados por la búsqueda</translation>
    </message>
    <message>
        <source>held by the core (smallest)</source>
        <translation>contenidos en el núcleo (mínimo)</translation>
    </message>
    <message>
        <source>at least this many accessions</source>
        <translation>al menos estas accesiones</translation>
    </message>
    <message>
        <source>held by the core</source>
        <translation>contenidos en el núcleo</translation>
    </message>
    <message>
        <source>Alleles against core size</source>
        <translation>Alelos según el tamaño del núcleo</translation>
    </message>
    <message>
        <source>the name must end in .png, .svg or .pdf</source>
        <translation>el nombre debe terminar en .png, .svg o .pdf</translation>
    </message>
    <message>
        <source>the picture could not be drawn</source>
        <translation>no se pudo dibujar la imagen</translation>
    </message>
    <message>
        <source>PNG images %1</source>
        <translation>Imágenes PNG %1</translation>
    </message>
    <message>
        <source>SVG drawings %1</source>
        <translation>Dibujos SVG %1</translation>
    </message>
    <message>
        <source>PDF documents %1</source>
        <translation>Documentos PDF %1</translation>
    </message>
    <message>
        <source>Save Graph As</source>
        <translation>Guardar gráfico como</translation>
    </message>
</context>
<context>
    <name>XMainWindow</name>
    <message>
        <source>New...</source>
        <translation>Nuevo...</translation>
    </message>
    <message>
        <source>Save...</source>
        <translation>Guardar...</translation>
    </message>
    <message>
        <source>Save As...</source>
        <translation>Guardar como...</translation>
    </message>
    <message>
        <source>Import Workspace...</source>
        <translation>Importar espacio de trabajo...</translation>
    </message>
    <message>
        <source>Export Workspace...</source>
        <translation>Exportar espacio de trabajo...</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Salir</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Acerca de</translation>
    </message>
    <message>
        <source>About Qt</source>
        <translation>Acerca de Qt</translation>
    </message>
    <message>
        <source>Ctrl+Shift+S</source>
        <translation>Ctrl+Shift+S</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Archivo</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>A&amp;yuda</translation>
    </message>
    <message>
        <source>New</source>
        <translation>Nuevo</translation>
    </message>
    <message>
        <source>Import</source>
        <translation>Importar</translation>
    </message>
    <message>
        <source>Sample</source>
        <translation>Ejemplo</translation>
    </message>
    <message>
        <source>Graph saved to %1</source>
        <translation>Gráfico guardado en %1</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Inicio</translation>
    </message>
    <message>
        <source>Core collection</source>
        <translation>Colección núcleo</translation>
    </message>
    <message>
        <source>Graph</source>
        <translation>Gráfico</translation>
    </message>
    <message>
        <source>Input file</source>
        <translation>Archivo de entrada</translation>
    </message>
    <message>
        <source>Starting collection</source>
        <translation>Colección de partida</translation>
    </message>
    <message>
        <source>Open a file or create a new table</source>
        <translation>Abrir un archivo o crear una tabla nueva</translation>
    </message>
    <message>
        <source>Import an existing workspace</source>
        <translation>Importar un espacio de trabajo existente</translation>
    </message>
    <message>
        <source>Show an input file sample</source>
        <translation>Ver un ejemplo de archivo de entrada</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>The input table has no accessions: it needs at least one row below its header row.</source>
        <translation>La tabla de entrada no tiene accesiones: necesita al menos una fila bajo su fila de encabezado.</translation>
    </message>
    <message>
        <source>Working...</source>
        <translation>Trabajando...</translation>
    </message>
    <message>
        <source>Abort</source>
        <translation>Interrumpir</translation>
    </message>
    <message numerus="yes">
        <source>Working...
Searching cores of %1 of %n accessions</source>
        <translation>
            <numerusform>Trabajando...
Buscando núcleos de %1 de %n accesión</numerusform>
            <numerusform>Trabajando...
Buscando núcleos de %1 de %n accesiones</numerusform>
        </translation>
    </message>
    <message>
        <source>Could not write %1: %2</source>
        <translation>No se pudo escribir %1: %2</translation>
    </message>
    <message>
        <source>The core collection cannot be saved as %1: %2.</source>
        <translation>La colección núcleo no se puede guardar como %1: %2.</translation>
    </message>
    <message>
        <source>Nothing was written.</source>
        <translation>No se escribió nada.</translation>
    </message>
    <message>
        <source>Core collection saved to %1</source>
        <translation>Colección núcleo guardada en %1</translation>
    </message>
    <message>
        <source>Comma separated value files %1</source>
        <translation>Archivos de valores separados por comas %1</translation>
    </message>
    <message>
        <source>Microsoft Excel files %1</source>
        <translation>Archivos de Microsoft Excel %1</translation>
    </message>
    <message>
        <source>Excel workbooks %1</source>
        <translation>Libros de Excel %1</translation>
    </message>
    <message>
        <source>Workspace files %1</source>
        <translation>Archivos de espacio de trabajo %1</translation>
    </message>
    <message>
        <source>Export Workspace</source>
        <translation>Exportar espacio de trabajo</translation>
    </message>
    <message>
        <source>Workspace exported to %1</source>
        <translation>Espacio de trabajo exportado a %1</translation>
    </message>
    <message>
        <source>Import Workspace</source>
        <translation>Importar espacio de trabajo</translation>
    </message>
    <message>
        <source>The file %1 cannot be imported: %2. The analysis shown stays as it is.</source>
        <translation>El archivo %1 no se puede importar: %2. El análisis mostrado queda como está.</translation>
    </message>
    <message>
        <source>The file %1 is not a valid workspace file: %2. The analysis shown stays as it is.</source>
        <translation>El archivo %1 no es un archivo de espacio de trabajo válido: %2. El análisis mostrado queda como está.</translation>
    </message>
    <message>
        <source>Imported %1</source>
        <translation>Importado %1</translation>
    </message>
</context>
<context>
    <name>XManualEditingPage</name>
    <message>
        <source>Click on the button to create a table using the values above.</source>
        <translation>Pulse el botón para crear una tabla con los valores de arriba.</translation>
    </message>
    <message>
        <source>Create</source>
        <translation>Crear</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Editar</translation>
    </message>
    <message>
        <source>Manual editing</source>
        <translation>Edición manual</translation>
    </message>
    <message>
        <source>Create and edit a new table</source>
        <translation>Crear y editar una tabla nueva</translation>
    </message>
    <message>
        <source>Rows</source>
        <translation>Filas</translation>
    </message>
    <message>
        <source>Columns</source>
        <translation>Columnas</translation>
    </message>
    <message>
        <source>Fill character</source>
        <translation>Carácter de relleno</translation>
    </message>
</context>
<context>
    <name>XProgressBar</name>
    <message numerus="yes">
        <source>Searching cores of %1 of %n accessions</source>
        <translation>
            <numerusform>Buscando núcleos de %1 de %n accesión</numerusform>
            <numerusform>Buscando núcleos de %1 de %n accesiones</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>XSample</name>
    <message>
        <source>Close</source>
        <translation>Cerrar</translation>
    </message>
    <message>
        <source>&lt;b&gt;Rows&lt;/b&gt;: Accessions</source>
        <translation>&lt;b&gt;Filas&lt;/b&gt;: accesiones</translation>
    </message>
    <message>
        <source>&lt;b&gt;Columns&lt;/b&gt;: Microsatellite markers</source>
        <translation>&lt;b&gt;Columnas&lt;/b&gt;: marcadores microsatélites</translation>
    </message>
    <message>
        <source>Comma-separated values (&lt;b&gt;.csv&lt;/b&gt;) file</source>
        <translation>Archivo de valores separados por comas (&lt;b&gt;.csv&lt;/b&gt;)</translation>
    </message>
    <message>
        <source>Microsoft Excel (&lt;b&gt;.xls&lt;/b&gt;) file</source>
        <translation>Archivo de Microsoft Excel (&lt;b&gt;.xls&lt;/b&gt;)</translation>
    </message>
</context>
<context>
    <name>XSaveFile</name>
    <message>
        <source>it is a folder</source>
        <translation>es una carpeta</translation>
    </message>
    <message>
        <source>it exists and is not a regular file</source>
        <translation>existe y no es un archivo normal</translation>
    </message>
</context>
<context>
    <name>XSearchCommand</name>
    <message>
        <source>The run ended without a result.</source>
        <translation>La ejecución terminó sin resultado.</translation>
    </message>
    <message>
        <source>%1: could not be written: %2</source>
        <translation>%1: no se pudo escribir: %2</translation>
    </message>
</context>
<context>
    <name>XSettingsPage</name>
    <message>
        <source>Reproducible (randomised, repeatable by seed)</source>
        <translation>Reproducible (aleatoria, repetible por semilla)</translation>
    </message>
    <message>
        <source>Smallest cores (exact)</source>
        <translation>Núcleos mínimos (exacta)</translation>
    </message>
    <message>
        <source>Algorithm Settings</source>
        <translation>Ajustes del algoritmo</translation>
    </message>
    <message>
        <source>Adjust the algorithm&apos;s parameters</source>
        <translation>Ajuste los parámetros del algoritmo</translation>
    </message>
    <message>
        <source>Iterations</source>
        <translation>Iteraciones</translation>
    </message>
    <message>
        <source>Rand seed (0 = autogenerated)</source>
        <translation>Semilla aleatoria (0 = automática)</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Búsqueda</translation>
    </message>
    <message>
        <source>Time budget (s)</source>
        <translation>Tiempo máximo (s)</translation>
    </message>
</context>
<context>
    <name>XSpreadsheet</name>
    <message>
        <source>The table has no allele columns: is it separated by semicolons or tabs?</source>
        <translation>La tabla no tiene columnas de alelos: ¿está separada por punto y coma o tabuladores?</translation>
    </message>
    <message>
        <source>No line has as many fields as the header row (%1): is there a trailing comma, or a comma in quotes, in the header?</source>
        <translation>Ninguna línea tiene tantos campos como la fila de encabezado (%1): ¿hay una coma al final, o una coma entre comillas, en el encabezado?</translation>
    </message>
    <message>
        <source>The file is empty.</source>
        <translation>El archivo está vacío.</translation>
    </message>
    <message>
        <source>The table has no accessions: it needs at least one row below its header row.</source>
        <translation>La tabla no tiene accesiones: necesita al menos una fila bajo su fila de encabezado.</translation>
    </message>
    <message>
        <source>the table has %1 columns, and an %2 worksheet holds %3</source>
        <translation>la tabla tiene %1 columnas, y una hoja %2 admite %3</translation>
    </message>
    <message>
        <source>the table has %1 rows, and an %2 worksheet holds %3</source>
        <translation>la tabla tiene %1 filas, y una hoja %2 admite %3</translation>
    </message>
    <message>
        <source>the table does not fit in an .xls worksheet</source>
        <translation>la tabla no cabe en una hoja .xls</translation>
    </message>
    <message>
        <source>the workbook could not be put together</source>
        <translation>no se pudo componer el libro</translation>
    </message>
    <message>
        <source>Error while parsing the %3 file: cell at row %1 and column %2 does not appear to be a valid string or number.</source>
        <translation>Error al analizar el archivo %3: la celda de la fila %1 y la columna %2 no parece un texto o número válido.</translation>
    </message>
    <message>
        <source>Error while parsing the %3 file: the cell at row %1 and column %2 holds more than %4 characters, more than a spreadsheet cell holds.</source>
        <translation>Error al analizar el archivo %3: la celda de la fila %1 y la columna %2 contiene más de %4 caracteres, más de lo que cabe en una celda de hoja de cálculo.</translation>
    </message>
    <message>
        <source>Error while parsing the %3 file: by the cell at row %1 and column %2, the cells of the first worksheet hold more than %4 characters of text, more than Vireon reads.</source>
        <translation>Error al analizar el archivo %3: al llegar a la celda de la fila %1 y la columna %2, las celdas de la primera hoja contienen más de %4 caracteres de texto, más de lo que lee Vireon.</translation>
    </message>
    <message>
        <source>Error while parsing the %1 file: the file cannot be read as a workbook.</source>
        <translation>Error al analizar el archivo %1: el archivo no se puede leer como libro de cálculo.</translation>
    </message>
    <message>
        <source>Error while parsing the %1 file: the workbook is protected by a password.</source>
        <translation>Error al analizar el archivo %1: el libro está protegido con contraseña.</translation>
    </message>
    <message>
        <source>Error while parsing the %1 file: the workbook has no worksheet.</source>
        <translation>Error al analizar el archivo %1: el libro no tiene ninguna hoja.</translation>
    </message>
    <message>
        <source>Error while parsing the %3 file: the first worksheet reaches row %1 and column %2, but fewer than one cell in a hundred of that holds something. Copy the table to a new worksheet.</source>
        <translation>Error al analizar el archivo %3: la primera hoja llega a la fila %1 y la columna %2, pero menos de una celda de cada cien contiene algo. Copie la tabla en una hoja nueva.</translation>
    </message>
    <message>
        <source>Error while parsing the %3 file: the first worksheet reaches row %1 and column %2, more cells than Vireon reads.</source>
        <translation>Error al analizar el archivo %3: la primera hoja llega a la fila %1 y la columna %2, más celdas de las que lee Vireon.</translation>
    </message>
    <message>
        <source>Error while parsing the %1 file: a part of the workbook would unpack to more than %2 MB; it was not unpacked.</source>
        <translation>Error al analizar el archivo %1: una parte del libro ocuparía más de %2 MB al descomprimirla; no se descomprimió.</translation>
    </message>
    <message>
        <source>Error while parsing the %1 file: the file is empty.</source>
        <translation>Error al analizar el archivo %1: el archivo está vacío.</translation>
    </message>
    <message>
        <source>Error while parsing the %1 file: the file is not a %1 workbook but another kind of file.</source>
        <translation>Error al analizar el archivo %1: el archivo no es un libro %1 sino otro tipo de archivo.</translation>
    </message>
    <message>
        <source>Error while parsing the %1 file: the first worksheet is empty.</source>
        <translation>Error al analizar el archivo %1: la primera hoja está vacía.</translation>
    </message>
    <message>
        <source>The %1 file cannot be read: the workbook reader could not be started.</source>
        <translation>El archivo %1 no se puede leer: no se pudo iniciar el lector de libros.</translation>
    </message>
    <message>
        <source>Error while parsing the %1 file: the workbook reader stopped on this file.</source>
        <translation>Error al analizar el archivo %1: el lector de libros se detuvo con este archivo.</translation>
    </message>
    <message>
        <source>the table does not fit in an .xlsx worksheet</source>
        <translation>la tabla no cabe en una hoja .xlsx</translation>
    </message>
    <message>
        <source>the workbook could not be put together: %1</source>
        <translation>no se pudo componer el libro: %1</translation>
    </message>
    <message>
        <source>%1 or %2</source>
        <translation>%1 o %2</translation>
    </message>
    <message>
        <source>The file you selected is not a %1 file.</source>
        <translation>El archivo elegido no es un archivo %1.</translation>
    </message>
</context>
<context>
    <name>XWizard</name>
    <message>
        <source>Discard Tables</source>
        <translation>Descartar tablas</translation>
    </message>
    <message>
        <source>Discard the tables of this analysis?</source>
        <translation>¿Descartar las tablas de este análisis?</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Descartar</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
</context>
<context>
    <name>XWorkspace</name>
    <message>
        <source>the number of fields differs from the header row&apos;s</source>
        <translation>el número de campos difiere del de la fila de encabezado</translation>
    </message>
    <message>
        <source>the table has no allele columns</source>
        <translation>la tabla no tiene columnas de alelos</translation>
    </message>
    <message>
        <source>line %1: %2</source>
        <translation>línea %1: %2</translation>
    </message>
    <message>
        <source>it does not hold a whole analysis</source>
        <translation>no contiene un análisis completo</translation>
    </message>
    <message>
        <source>the input table has no accessions</source>
        <translation>la tabla de entrada no tiene accesiones</translation>
    </message>
    <message>
        <source>the starting collection&apos;s header row differs from the input table&apos;s</source>
        <translation>la fila de encabezado de la colección de partida difiere de la de la tabla de entrada</translation>
    </message>
    <message>
        <source>a result line holds something other than row numbers and an allele count of 0 or more</source>
        <translation>una línea del resultado contiene algo distinto de números de fila y un recuento de alelos de 0 o más</translation>
    </message>
    <message>
        <source>the result has %1 lines, and a search writes 100</source>
        <translation>el resultado tiene %1 líneas, y una búsqueda escribe 100</translation>
    </message>
    <message>
        <source>the core lists %1 accessions, and the input table has %2</source>
        <translation>el núcleo enumera %1 accesiones, y la tabla de entrada tiene %2</translation>
    </message>
    <message>
        <source>row %1 is not an accession of the input table, which has %2</source>
        <translation>la fila %1 no es una accesión de la tabla de entrada, que tiene %2</translation>
    </message>
</context>
<context>
    <name>XWorkspaceCheck</name>
    <message>
        <source>%1 is %2, where %3 belongs</source>
        <translation>%1 vale %2, donde corresponde %3</translation>
    </message>
    <message>
        <source>the search %1 is none that Vireon knows (reproducible or exact)</source>
        <translation>la búsqueda %1 no es ninguna que Vireon conozca (reproducible o exact)</translation>
    </message>
    <message>
        <source>HasSource is %1, where true or false belongs</source>
        <translation>HasSource vale %1, donde corresponde true o false</translation>
    </message>
    <message>
        <source>a whole number from 1 to 100</source>
        <translation>un número entero de 1 a 100</translation>
    </message>
    <message>
        <source>a whole number of at least 1</source>
        <translation>un número entero de al menos 1</translation>
    </message>
    <message>
        <source>a whole number</source>
        <translation>un número entero</translation>
    </message>
    <message>
        <source>a whole number of 0 or more</source>
        <translation>un número entero de 0 o más</translation>
    </message>
    <message>
        <source>Seconds is %1, where a number of 0 or more belongs</source>
        <translation>Seconds vale %1, donde corresponde un número de 0 o más</translation>
    </message>
    <message>
        <source>lower bounds come from the exact search, and this result is the reproducible search&apos;s</source>
        <translation>las cotas inferiores proceden de la búsqueda exacta, y este resultado es de la búsqueda reproducible</translation>
    </message>
    <message>
        <source>%1 under marker %2 is not an allele (a whole number of 0 or more, or * for a missing one)</source>
        <translation>%1 bajo el marcador %2 no es un alelo (un número entero de 0 o más, o * para uno que falta)</translation>
    </message>
    <message>
        <source>the exact search&apos;s lower bounds are missing</source>
        <translation>faltan las cotas inferiores de la búsqueda exacta</translation>
    </message>
    <message>
        <source>there are %1 lower bounds, and the exact search writes one for each of the 100 shares</source>
        <translation>hay %1 cotas inferiores, y la búsqueda exacta escribe una para cada una de las 100 proporciones</translation>
    </message>
    <message>
        <source>the lower bound %1 for %2 % is not a whole number from 0 to the core&apos;s size, %3</source>
        <translation>la cota inferior %1 para el %2 % no es un número entero de 0 al tamaño del núcleo, %3</translation>
    </message>
    <message>
        <source>the count %1 is more than the %2 alleles the tables hold</source>
        <translation>el recuento %1 supera los %2 alelos que contienen las tablas</translation>
    </message>
    <message>
        <source>the core is empty, so it holds the starting collection&apos;s %1 alleles, not %2</source>
        <translation>el núcleo está vacío, así que contiene los %1 alelos de la colección de partida, no %2</translation>
    </message>
    <message>
        <source>the count %1 falls below the %2 of the share before it, and a search&apos;s counts never fall</source>
        <translation>el recuento %1 baja del %2 de la proporción anterior, y los recuentos de una búsqueda nunca bajan</translation>
    </message>
    <message>
        <source>the core of %1 accessions is smaller than the %2 of the share before it, and a search&apos;s cores never shrink</source>
        <translation>el núcleo de %1 accesiones es menor que el de %2 de la proporción anterior, y los núcleos de una búsqueda nunca se reducen</translation>
    </message>
    <message>
        <source>the core differs from the one before it in the same number of accessions, and the search keeps one core for each size</source>
        <translation>el núcleo difiere del anterior con el mismo número de accesiones, y la búsqueda conserva un núcleo por tamaño</translation>
    </message>
    <message>
        <source>the count %1 falls short of %2 % of the %3 alleles, which the core for that share reaches</source>
        <translation>el recuento %1 no llega al %2 % de los %3 alelos, que el núcleo de esa proporción alcanza</translation>
    </message>
    <message>
        <source>the core lists a row twice, and the exact search lists each row once</source>
        <translation>el núcleo enumera una fila dos veces, y la búsqueda exacta enumera cada fila una vez</translation>
    </message>
    <message>
        <source>the count %1 differs from the %2 alleles the core holds with the starting collection</source>
        <translation>el recuento %1 difiere de los %2 alelos que contiene el núcleo con la colección de partida</translation>
    </message>
    <message>
        <source>the count %1 differs from the %2 alleles the core holds</source>
        <translation>el recuento %1 difiere de los %2 alelos que contiene el núcleo</translation>
    </message>
</context>
<context>
    <name>XWorkspaceCommand</name>
    <message>
        <source>%1: not a valid workspace file: %2</source>
        <translation>%1: no es un archivo de espacio de trabajo válido: %2</translation>
    </message>
    <message>
        <source>not recorded</source>
        <translation>no registrado</translation>
    </message>
    <message>
        <source>%1: could not be written: %2</source>
        <translation>%1: no se pudo escribir: %2</translation>
    </message>
</context>
</TS>
